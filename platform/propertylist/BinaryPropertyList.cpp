#include "platform/propertylist/PropertyListReaders.h"
#include "platform/values/ByteCursor.h"
#include "platform/values/Utf16Text.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace tolvane::platform {

namespace {

constexpr std::size_t headerLength = 8;
constexpr std::size_t trailerLength = 32;
constexpr std::uint64_t elementWeight = 32;

constexpr std::string_view withinObjects = "an object that ends before the offset table";

/// Reads one list. The first fault is kept, and everything after it returns at once.
class BinaryReader {
public:
    explicit BinaryReader(std::span<const std::byte> bytes)
        : bytes_(bytes)
        , mostWeight_(bytes.size() * mostPropertyListGrowth + propertyListAllowance) {}

    std::expected<Value, PropertyListFault> read() {
        readTrailer();
        readOffsets();
        Value value = failed() ? Value() : object(top_, bytes_.size() - trailerLength + 16, 0);
        if (fault_) {
            return std::unexpected(*std::move(fault_));
        }
        return value;
    }

private:
    void readTrailer() {
        if (!std::string_view(reinterpret_cast<const char*>(bytes_.data()), bytes_.size())
                 .starts_with("bplist00")) {
            fail(0, R"(the letters "bplist00")");
            return;
        }
        if (bytes_.size() < headerLength + trailerLength) {
            fail(bytes_.size(), "a trailer of 32 bytes");
            return;
        }
        const std::size_t trailer = bytes_.size() - trailerLength;
        ByteCursor cursor(bytes_);
        cursor.seek(trailer + 6);
        offsetSize_ = cursor.u8();
        referenceSize_ = cursor.u8();
        count_ = cursor.bigEndian(8);
        top_ = cursor.bigEndian(8);
        const std::uint64_t table = cursor.bigEndian(8);
        if (offsetSize_ < 1 || offsetSize_ > 8) {
            fail(trailer + 6, "a width of offsets from 1 to 8");
        } else if (referenceSize_ < 1 || referenceSize_ > 8) {
            fail(trailer + 7, "a width of object numbers from 1 to 8");
        } else if (table < headerLength || table > trailer) {
            fail(trailer + 24, "an offset table between the header and the trailer");
        } else if (count_ > (trailer - table) / offsetSize_) {
            fail(trailer + 8, "no more objects than the offset table has room for");
        } else {
            objects_ = bytes_.first(table);
        }
    }

    void readOffsets() {
        if (failed()) {
            return;
        }
        ByteCursor cursor(bytes_);
        cursor.seek(objects_.size());
        offsets_.reserve(count_);
        isOpen_.resize(count_);
        for (std::uint64_t i = 0; i < count_; ++i) {
            const std::size_t place = cursor.position();
            const std::uint64_t offset = cursor.bigEndian(offsetSize_);
            if (offset < headerLength || offset >= objects_.size()) {
                fail(place, "an offset between the header and the offset table");
                return;
            }
            offsets_.push_back(offset);
        }
    }

    /// The object of a number that is written at `place`, within so many containers.
    Value object(std::uint64_t number, std::size_t place, unsigned level) {
        if (number >= offsets_.size()) {
            fail(place, "the number of an object");
            return {};
        }
        if (isOpen_[number]) {
            fail(place, "an object that does not contain itself");
            return {};
        }
        isOpen_[number] = true;
        Value value = objectAt(offsets_[number], level);
        isOpen_[number] = false;
        return value;
    }

    Value objectAt(std::size_t offset, unsigned level) {
        const auto marker = std::to_integer<unsigned>(objects_[offset]);
        const unsigned low = marker & 0xFU;
        switch (marker >> 4U) {
        case 0x0:
            return simpleObject(offset, low);
        case 0x1:
            return integer(offset, low);
        case 0x2:
            return real(offset, low);
        case 0x3:
            return date(offset, low);
        case 0x4:
            return data(offset, low);
        case 0x5:
            return asciiText(offset, low);
        case 0x6:
            return wideText(offset, low);
        case 0x8:
            return identifier(offset, low);
        case 0xA:
        case 0xC:
        case 0xD:
            if (level == deepestPropertyListLevel) {
                fail(offset, "containers at most 512 deep");
                return {};
            }
            return marker >> 4U == 0xD ? dictionary(offset, low, level + 1) : array(offset, low, level + 1);
        default:
            fail(offset, "the marker of an object");
            return {};
        }
    }

    Value simpleObject(std::size_t offset, unsigned low) {
        constexpr unsigned falseObject = 0x8;
        constexpr unsigned trueObject = 0x9;
        if (low == falseObject || low == trueObject) {
            return low == trueObject;
        }
        if (low != 0) {
            fail(offset, low == 0xF ? "an object, not fill" : "the marker of an object");
        }
        return {};
    }

    Value integer(std::size_t offset, unsigned low) {
        constexpr unsigned lowOf16Bytes = 4;
        if (low > lowOf16Bytes) {
            fail(offset, "a whole number of 1, 2, 4, 8 or 16 bytes");
            return {};
        }
        if (low == lowOf16Bytes) {
            return longInteger(offset);
        }
        // The shorter ones have no sign.
        ByteCursor cursor = contentsAt(offset);
        const auto number = static_cast<std::int64_t>(cursor.bigEndian(std::size_t{1} << low));
        if (cursor.failed()) {
            fail(offset, withinObjects);
        }
        return number;
    }

    Value longInteger(std::size_t offset) {
        ByteCursor cursor = contentsAt(offset);
        const std::uint64_t high = cursor.bigEndian(8);
        const std::uint64_t number = cursor.bigEndian(8);
        const auto isNegative = static_cast<std::int64_t>(number) < 0;
        if (cursor.failed()) {
            fail(offset, withinObjects);
        } else if (high == 0 && isNegative) {
            return number;
        } else if (high != (isNegative ? ~std::uint64_t{0} : 0)) {
            fail(offset, "a whole number of 64 bits");
        }
        return static_cast<std::int64_t>(number);
    }

    Value real(std::size_t offset, unsigned low) {
        constexpr unsigned lowOf4Bytes = 2;
        constexpr unsigned lowOf8Bytes = 3;
        if (low != lowOf4Bytes && low != lowOf8Bytes) {
            fail(offset, "a fraction of 4 or 8 bytes");
            return {};
        }
        ByteCursor cursor = contentsAt(offset);
        const double number = low == lowOf4Bytes ? static_cast<double>(std::bit_cast<float>(cursor.u32be()))
                                                 : std::bit_cast<double>(cursor.bigEndian(8));
        if (cursor.failed()) {
            fail(offset, withinObjects);
        }
        return number;
    }

    Value date(std::size_t offset, unsigned low) {
        constexpr unsigned lowOf8Bytes = 3;
        if (low != lowOf8Bytes) {
            fail(offset, "a date of 8 bytes");
            return {};
        }
        ByteCursor cursor = contentsAt(offset);
        const auto seconds = std::bit_cast<double>(cursor.bigEndian(8));
        if (cursor.failed()) {
            fail(offset, withinObjects);
        }
        return Date(seconds);
    }

    Value identifier(std::size_t offset, unsigned low) {
        ByteCursor cursor = contentsAt(offset);
        std::uint64_t number = 0;
        for (const std::byte byte : cursor.take(low + 1)) {
            number = number << 8U | std::to_integer<std::uint64_t>(byte);
            if (number > std::numeric_limits<std::uint32_t>::max()) {
                fail(offset, "an identifier of 32 bits");
                return {};
            }
        }
        if (cursor.failed()) {
            fail(offset, withinObjects);
        }
        return Dictionary{{"CF$UID", static_cast<std::int64_t>(number)}};
    }

    Value data(std::size_t offset, unsigned low) {
        const auto bytes = counted(offset, low, 1, 1);
        return Data(bytes.begin(), bytes.end());
    }

    Value asciiText(std::size_t offset, unsigned low) {
        constexpr std::byte firstBeyond{0x80};
        const auto bytes = counted(offset, low, 1, 1);
        const auto odd = std::ranges::find_if(bytes, [](std::byte byte) { return byte >= firstBeyond; });
        if (odd != bytes.end()) {
            fail(placeOf(bytes) + static_cast<std::size_t>(odd - bytes.begin()), "a character of ASCII");
            return {};
        }
        return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }

    Value wideText(std::size_t offset, unsigned low) {
        constexpr std::uint64_t mostBytesInUtf8 = 3;
        ByteCursor cursor(counted(offset, low, 2, mostBytesInUtf8));
        Utf16Text text;
        while (cursor.remaining() > 0) {
            text.append(static_cast<char16_t>(cursor.u16be()));
        }
        return text.take();
    }

    Value array(std::size_t offset, unsigned low, unsigned level) {
        const auto numbers = counted(offset, low, referenceSize_, elementWeight);
        Array array;
        array.reserve(numbers.size() / referenceSize_);
        for (std::size_t i = 0; i < numbers.size() / referenceSize_ && !failed(); ++i) {
            array.push_back(element(numbers, i, level));
        }
        return array;
    }

    Value dictionary(std::size_t offset, unsigned low, unsigned level) {
        const auto numbers = counted(offset, low, 2 * referenceSize_, 2 * elementWeight);
        const std::size_t count = numbers.size() / (2 * referenceSize_);
        std::vector<Dictionary::Entry> entries;
        entries.reserve(count);
        for (std::size_t i = 0; i < count && !failed(); ++i) {
            const Value key = element(numbers, i, level);
            const auto* const name = key.as<std::string>();
            if (name == nullptr) {
                fail(
                    placeOf(numbers) + i * referenceSize_, "the number of a text as the key of a dictionary");
                break;
            }
            entries.push_back({*name, element(numbers, count + i, level)});
        }
        return Dictionary::fromEntries(std::move(entries));
    }

    /// A cursor past the marker of an object.
    ByteCursor contentsAt(std::size_t offset) const {
        ByteCursor cursor(objects_);
        cursor.seek(offset + 1);
        return cursor;
    }

    /// The bytes of an object that counts its pieces, in its marker or after it; no bytes where they do not
    /// fit. `weight` is what one piece adds to the list when it is written out.
    std::span<const std::byte> counted(
        std::size_t offset, unsigned low, std::size_t width, std::uint64_t weight) {
        constexpr unsigned countFollows = 0xF;
        constexpr unsigned narrowestCount = 0x10;
        constexpr unsigned widestCount = 0x13;
        ByteCursor cursor = contentsAt(offset);
        std::uint64_t count = low;
        if (low == countFollows) {
            const unsigned marker = cursor.u8();
            if (!cursor.failed() && (marker < narrowestCount || marker > widestCount)) {
                fail(offset + 1, "a count of 1, 2, 4 or 8 bytes");
                return {};
            }
            count = cursor.bigEndian(std::size_t{1} << (marker & 3U));
        }
        if (cursor.failed() || count > cursor.remaining() / width) {
            fail(offset, withinObjects);
            return {};
        }
        weight_ += count * weight;
        if (weight_ > mostWeight_) {
            fail(offset, "objects that are not shared too often to be written out");
            return {};
        }
        return cursor.take(count * width);
    }

    /// The element of a container whose number is the given one of these.
    Value element(std::span<const std::byte> numbers, std::size_t index, unsigned level) {
        const auto number = numbers.subspan(index * referenceSize_, referenceSize_);
        return object(ByteCursor(number).bigEndian(referenceSize_), placeOf(number), level);
    }

    std::size_t placeOf(std::span<const std::byte> part) const {
        return static_cast<std::size_t>(part.data() - bytes_.data());
    }

    void fail(std::size_t place, std::string_view expected) {
        if (!fault_) {
            fault_ = PropertyListFault{place, std::string(expected)};
        }
    }
    bool failed() const { return fault_.has_value(); }

    std::span<const std::byte> bytes_;
    std::span<const std::byte> objects_; ///< All that lies before the offset table.
    std::size_t referenceSize_ = 0;
    std::size_t offsetSize_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t top_ = 0;
    std::vector<std::size_t> offsets_;
    std::vector<bool> isOpen_; ///< Which objects are being read, by their numbers.
    std::uint64_t weight_ = 0;
    std::uint64_t mostWeight_;
    std::optional<PropertyListFault> fault_;
};

} // namespace

std::expected<Value, PropertyListFault> readBinaryPropertyList(std::span<const std::byte> bytes) {
    return BinaryReader(bytes).read();
}

} // namespace tolvane::platform
