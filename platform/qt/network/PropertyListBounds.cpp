#include "platform/qt/network/PropertyListBounds.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tolvane::platform {

namespace {

constexpr std::size_t mostContainers = 10'000;
constexpr std::size_t mostElements = 200'000;
/// All texts and data together, counted each time they are referred to.
constexpr std::uint64_t mostLeafBytes = std::uint64_t{16} * 1024 * 1024;

using Bytes = std::span<const std::byte>;

std::string_view textOf(Bytes data) {
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

/// Whether the text of a list in XML has few enough tags. What stands in comments is counted too.
bool isTextWithinBounds(std::string_view text) {
    std::size_t tags = 0;
    std::size_t containers = 0;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const std::string_view name = text.substr(at + 1);
        tags += name.starts_with('/') ? 0U : 1U;
        containers += name.starts_with("array") || name.starts_with("dict") ? 1U : 0U;
        if (tags > mostElements || containers > mostContainers) {
            return false;
        }
    }
    return true;
}

/// The objects of a binary list, as its offset table and their first bytes describe them.
class BinaryStructure {
public:
    explicit BinaryStructure(Bytes data) : data_(data) {}

    bool isWithinBounds() { return readTrailer() && readObjects() && countReferences(); }

private:
    static constexpr std::size_t trailerLength = 32;

    struct Object {
        bool isContainer = false;
        bool isDictionary = false;
        bool isWideText = false;
        /// Of a container the place of its references and their number; of a text or data that of its bytes
        /// and theirs.
        std::uint64_t references = 0;
        std::uint64_t count = 0;
    };

    /// A big-endian number; nothing when it lies outside the bytes.
    std::optional<std::uint64_t> number(std::uint64_t offset, std::size_t length) const {
        if (length > sizeof(std::uint64_t) || offset > data_.size() || data_.size() - offset < length) {
            return std::nullopt;
        }
        std::uint64_t value = 0;
        for (const std::byte byte : data_.subspan(offset, length)) {
            value = value << 8U | std::to_integer<std::uint64_t>(byte);
        }
        return value;
    }

    bool readTrailer() {
        if (data_.size() < trailerLength) {
            return false;
        }
        const std::size_t trailer = data_.size() - trailerLength;
        offsetSize_ = std::to_integer<std::size_t>(data_[trailer + 6]);
        referenceSize_ = std::to_integer<std::size_t>(data_[trailer + 7]);
        objectCount_ = *number(trailer + 8, 8);
        root_ = *number(trailer + 16, 8);
        offsetTable_ = *number(trailer + 24, 8);
        return offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8
               && offsetTable_ <= trailer && objectCount_ <= (trailer - offsetTable_) / offsetSize_
               && objectCount_ <= mostElements && root_ < objectCount_;
    }

    bool readObjects() {
        objects_.reserve(objectCount_);
        for (std::uint64_t i = 0; i < objectCount_; ++i) {
            const auto offset = number(offsetTable_ + i * offsetSize_, offsetSize_);
            if (!offset || *offset >= data_.size()) {
                return false;
            }
            const auto object = objectAt(*offset);
            if (!object) {
                return false;
            }
            objects_.push_back(*object);
        }
        return static_cast<std::size_t>(std::ranges::count(objects_, true, &Object::isContainer))
               <= mostContainers;
    }

    std::optional<Object> objectAt(std::uint64_t offset) const {
        const auto marker = std::to_integer<unsigned>(data_[offset]);
        const unsigned kind = marker >> 4U;
        const bool isContainer = kind >= 0xA;
        if (!isContainer && (kind < 0x4 || kind > 0x6)) {
            return Object{};
        }
        std::uint64_t count = marker & 0xFU;
        std::uint64_t contents = offset + 1;
        if (count == 0xF) {
            const auto size = number(contents, 1);
            if (!size || (*size & 0xFU) > 3) {
                return std::nullopt;
            }
            const std::size_t length = std::size_t{1} << (*size & 0xFU);
            const auto longCount = number(contents + 1, length);
            if (!longCount) {
                return std::nullopt;
            }
            count = *longCount;
            contents += 1 + length;
        }
        if (count > data_.size()) {
            return std::nullopt;
        }
        // A dictionary has as many values as keys, and a character of the wide texts has two bytes.
        count *= kind == 0xD || kind == 0x6 ? 2 : 1;
        return Object{isContainer, kind == 0xD, kind == 0x6, contents, count};
    }

    bool countReferences() const {
        std::size_t elements = 0;
        std::uint64_t leafBytes = 0;
        std::vector<bool> isNamed(objects_.size());
        isNamed[root_] = true;
        for (const Object& object : objects_) {
            if (!object.isContainer) {
                continue;
            }
            elements += object.count;
            if (elements > mostElements) {
                return false;
            }
            for (std::uint64_t i = 0; i < object.count; ++i) {
                const auto index = number(object.references + i * referenceSize_, referenceSize_);
                if (!index || *index >= objects_.size()) {
                    return false;
                }
                const Object& element = objects_[*index];
                if (element.isContainer && isNamed[*index]) {
                    return false;
                }
                isNamed[*index] = true;
                leafBytes += element.isContainer ? 0 : element.count;
                if (leafBytes > mostLeafBytes) {
                    return false;
                }
                const bool isKey = object.isDictionary && i < object.count / 2;
                if (isKey && element.isWideText && holdsNul(element)) {
                    return false;
                }
            }
        }
        return true;
    }

    bool holdsNul(const Object& wideText) const {
        for (std::uint64_t i = 0; i < wideText.count; i += 2) {
            if (number(wideText.references + i, 2) == 0U) {
                return true;
            }
        }
        return false;
    }

    Bytes data_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t root_ = 0;
    std::uint64_t offsetTable_ = 0;
    std::vector<Object> objects_;
};

} // namespace

bool isBinaryPropertyList(std::span<const std::byte> data) {
    return textOf(data).starts_with("bplist");
}

bool isPropertyListWithinBounds(std::span<const std::byte> data) {
    return isBinaryPropertyList(data) ? BinaryStructure(data).isWithinBounds()
                                      : isTextWithinBounds(textOf(data));
}

} // namespace tolvane::platform
