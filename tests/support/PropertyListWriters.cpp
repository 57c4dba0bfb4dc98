#include "tests/support/PropertyListWriters.h"

#include "platform/values/Base64.h"
#include "platform/values/Utf8.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <string_view>
#include <utility>
#include <variant>

namespace tolvane::tests {

namespace {

using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Null;
using platform::Value;

std::string bytesOfNumber(double number) {
    const double plain = std::isnan(number) ? std::numeric_limits<double>::quiet_NaN() : number;
    return bigEndian(std::bit_cast<std::uint64_t>(plain), 8);
}

std::string textObject(std::string_view text) {
    std::string units;
    bool isAscii = true;
    for (std::size_t at = 0; at < text.size();) {
        const auto [character, length, valid] = platform::decodeFirstCharacter(text.substr(at));
        constexpr unsigned firstPair = 0x10000;
        isAscii = isAscii && character < 0x80;
        if (character >= firstPair) {
            units += bigEndian(0xD800U + ((character - firstPair) >> 10U), 2);
            units += bigEndian(0xDC00U + ((character - firstPair) & 0x3FFU), 2);
        } else {
            units += bigEndian(character, 2);
        }
        at += length;
    }
    return isAscii ? marker(0x5, text.size()) + std::string(text) : marker(0x6, units.size() / 2) + units;
}

/// The number of an identifier of keyed archives.
const std::int64_t* identifierIn(const Dictionary& dictionary) {
    const Value* const number = dictionary.size() == 1 ? dictionary.find("CF$UID") : nullptr;
    const auto* const whole = number == nullptr ? nullptr : number->as<std::int64_t>();
    return whole != nullptr && *whole >= 0 && *whole <= std::numeric_limits<std::uint32_t>::max() ? whole
                                                                                                  : nullptr;
}

/// Gives every object its number, the containers before what they hold.
class BinaryWriter {
public:
    std::optional<std::string> list(const Value& value) {
        // All numbers are of four bytes, whatever their count.
        add(value);
        if (!isWritable_) {
            return std::nullopt;
        }
        return BinaryObjects{.objects = std::move(objects_), .referenceSize = 4, .offsetSize = 4}.list();
    }

private:
    std::size_t addLeaf(std::string object) {
        const auto [place, isNew] = leaves_.try_emplace(object, objects_.size());
        if (isNew) {
            objects_.push_back(std::move(object));
        }
        return place->second;
    }

    std::size_t addContainer(unsigned kind, const Array& first, const Array& second = {}) {
        const std::size_t number = objects_.size();
        objects_.emplace_back();
        std::vector<std::size_t> references;
        for (const Array* const part : {&first, &second}) {
            for (const Value& value : *part) {
                references.push_back(add(value));
            }
        }
        objects_[number] = container(kind, references, 4);
        return number;
    }

    std::size_t add(const Value& value) {
        return std::visit([this](const auto& kind) { return addKind(kind); }, value.storage());
    }

    std::size_t addKind(Null) { return addLeaf({'\0'}); }
    std::size_t addKind(bool isTrue) { return addLeaf(isTrue ? "\x09" : "\x08"); }
    std::size_t addKind(std::int64_t number) {
        return addLeaf('\x13' + bigEndian(static_cast<std::uint64_t>(number), 8));
    }
    std::size_t addKind(std::uint64_t number) {
        return addLeaf('\x14' + bigEndian(0, 8) + bigEndian(number, 8));
    }
    std::size_t addKind(double number) { return addLeaf('\x23' + bytesOfNumber(number)); }
    std::size_t addKind(const Date& date) {
        return addLeaf('\x33' + bytesOfNumber(date.timeIntervalSinceReferenceDate()));
    }
    std::size_t addKind(const Data& data) {
        return addLeaf(
            marker(0x4, data.size()) + std::string(reinterpret_cast<const char*>(data.data()), data.size()));
    }
    std::size_t addKind(const std::string& text) { return addLeaf(textObject(text)); }
    std::size_t addKind(const Array& array) { return addContainer(0xA, array); }
    std::size_t addKind(const Dictionary& dictionary) {
        if (const auto* const identifier = identifierIn(dictionary)) {
            return addLeaf('\x83' + bigEndian(static_cast<std::uint64_t>(*identifier), 4));
        }
        Array keys;
        Array values;
        for (const auto& [key, value] : dictionary) {
            keys.emplace_back(key);
            values.push_back(value);
        }
        return addContainer(0xD, keys, values);
    }
    template <typename Other>
    std::size_t addKind(const Other&) {
        isWritable_ = false;
        return 0;
    }

    std::vector<std::string> objects_;
    std::map<std::string, std::size_t> leaves_;
    bool isWritable_ = true;
};

template <typename Number>
std::string shortest(Number number) {
    std::array<char, 64> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

class XMLWriter {
public:
    std::optional<std::string> list(const Value& value) {
        add(value);
        return isWritable_
                   ? std::optional(
                         R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0">)" + xml_ + "</plist>")
                   : std::nullopt;
    }

private:
    void add(const Value& value) {
        std::visit([this](const auto& kind) { addKind(kind); }, value.storage());
    }

    void element(const std::string& name, const std::string& contents) {
        xml_.append("<").append(name).append(">").append(contents).append("</").append(name).append(">");
    }

    std::string escaped(std::string_view text) {
        std::string written;
        for (const char c : text) {
            if (std::string_view("<>&\r").contains(c)) {
                written += "&#" + std::to_string(c) + ';';
            } else {
                written += c;
            }
            isWritable_ =
                isWritable_ && (static_cast<unsigned char>(c) >= ' ' || c == '\t' || c == '\n' || c == '\r');
        }
        // XML has no place for these two characters.
        isWritable_ = isWritable_ && !text.contains("\xEF\xBF\xBE") && !text.contains("\xEF\xBF\xBF");
        return written;
    }

    void addKind(bool isTrue) { xml_ += isTrue ? "<true/>" : "<false/>"; }
    void addKind(std::int64_t number) { element("integer", shortest(number)); }
    void addKind(std::uint64_t number) { element("integer", shortest(number)); }
    void addKind(double number) { element("real", shortest(number)); }
    void addKind(const std::string& text) { element("string", escaped(text)); }
    void addKind(const Data& data) { element("data", platform::base64EncodedString(data)); }
    void addKind(const Date& date) {
        constexpr std::int64_t year0 = -62'167'219'200;
        constexpr std::int64_t year10000 = 253'402'300'800;
        const std::int64_t seconds = date.unixSeconds();
        isWritable_ = isWritable_ && date.nanoseconds() == 0 && seconds >= year0 && seconds < year10000
                      && Date::fromUnixTime(seconds, 0) == date;
        element("date", date.iso8601().substr(0, 19) + 'Z');
    }
    void addKind(const Array& array) {
        xml_ += "<array>";
        for (const Value& value : array) {
            add(value);
        }
        xml_ += "</array>";
    }
    void addKind(const Dictionary& dictionary) {
        xml_ += "<dict>";
        for (const auto& [key, value] : dictionary) {
            element("key", escaped(key));
            add(value);
        }
        xml_ += "</dict>";
    }
    template <typename Other>
    void addKind(const Other&) {
        isWritable_ = false;
    }

    std::string xml_;
    bool isWritable_ = true;
};

class TextWriter {
public:
    std::optional<std::string> list(const Value& value) {
        add(value);
        return isWritable_ ? std::optional(text_) : std::nullopt;
    }

private:
    void add(const Value& value) {
        std::visit([this](const auto& kind) { addKind(kind); }, value.storage());
    }

    void addKind(const std::string& text) {
        text_ += '"';
        for (const char c : text) {
            text_ += std::string_view("\"\\").contains(c) ? std::string{'\\', c} : std::string{c};
        }
        text_ += '"';
    }
    void addKind(const Data& data) {
        text_ += '<';
        for (const std::byte byte : data) {
            text_ += "0123456789abcdef"[std::to_integer<unsigned>(byte) >> 4U];
            text_ += "0123456789abcdef"[std::to_integer<unsigned>(byte) & 0xFU];
        }
        text_ += '>';
    }
    void addKind(const Array& array) {
        text_ += '(';
        for (const Value& value : array) {
            add(value);
            text_ += ", ";
        }
        text_ += ')';
    }
    void addKind(const Dictionary& dictionary) {
        text_ += "{ ";
        for (const auto& [key, value] : dictionary) {
            addKind(key);
            text_ += " = ";
            add(value);
            text_ += "; ";
        }
        text_ += '}';
    }
    template <typename Other>
    void addKind(const Other&) {
        isWritable_ = false;
    }

    std::string text_;
    bool isWritable_ = true;
};

} // namespace

std::string bigEndian(std::uint64_t number, std::size_t width) {
    std::string bytes;
    for (std::size_t i = width; i > 0; --i) {
        bytes += static_cast<char>(i > 8 ? 0 : number >> (8 * (i - 1)));
    }
    return bytes;
}

std::string marker(unsigned kind, std::size_t count) {
    constexpr std::size_t mostInMarker = 14;
    const std::string follows = count > mostInMarker ? '\x12' + bigEndian(count, 4) : "";
    return static_cast<char>(kind << 4U | (follows.empty() ? count : 0xF)) + follows;
}

std::string container(unsigned kind, const std::vector<std::size_t>& references, std::size_t referenceSize) {
    std::string object = marker(kind, kind == 0xD ? references.size() / 2 : references.size());
    for (const std::size_t reference : references) {
        object += bigEndian(reference, referenceSize);
    }
    return object;
}

std::string BinaryObjects::list() const {
    std::string list = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += bigEndian(list.size(), offsetSize);
        list += object;
    }
    const std::size_t table = list.size();
    return list + offsets + std::string(6, '\0') + static_cast<char>(offsetSize)
           + static_cast<char>(referenceSize) + bigEndian(objects.size(), 8) + bigEndian(top, 8)
           + bigEndian(table, 8);
}

std::optional<std::string> binaryPropertyList(const Value& value) {
    return BinaryWriter().list(value);
}

std::optional<std::string> xmlPropertyList(const Value& value) {
    return XMLWriter().list(value);
}

std::optional<std::string> textPropertyList(const Value& value) {
    return TextWriter().list(value);
}

} // namespace tolvane::tests
