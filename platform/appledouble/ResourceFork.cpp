#include "platform/appledouble/ResourceFork.h"

#include "platform/values/ByteCursor.h"
#include "platform/values/MacRoman.h"

#include <algorithm>

namespace tolvane::platform {

namespace {

constexpr std::size_t mapHeadLength = 22; // A copy of the header, a handle and a file's number.
constexpr std::size_t referenceLength = 12;
constexpr std::uint16_t noName = 0xFFFF;

/// Reads one fork. The first fault is kept, and everything after it returns at once.
class ForkReader {
public:
    explicit ForkReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

    std::expected<ResourceFork, ForkFault> read() {
        readHeader();
        readMap();
        if (fault_) {
            return std::unexpected(*fault_);
        }
        return std::move(fork_);
    }

private:
    void readHeader() {
        ByteCursor cursor(bytes_);
        dataOffset_ = cursor.u32be();
        mapOffset_ = cursor.u32be();
        const std::size_t dataLength = cursor.u32be();
        const std::size_t mapLength = cursor.u32be();
        if (cursor.failed()) {
            fail(bytes_.size(), "a header of 16 bytes");
        } else if (dataOffset_ > bytes_.size() || dataLength > bytes_.size() - dataOffset_) {
            fail(0, "resource data within the fork");
        } else if (mapOffset_ > bytes_.size() || mapLength > bytes_.size() - mapOffset_) {
            fail(4, "a resource map within the fork");
        } else {
            data_ = bytes_.subspan(dataOffset_, dataLength);
            map_ = bytes_.subspan(mapOffset_, mapLength);
        }
    }

    void readMap() {
        if (fault_) {
            return;
        }
        ByteCursor cursor(map_);
        cursor.seek(std::min(mapHeadLength, map_.size()));
        fork_.attributes = cursor.u16be();
        const std::size_t typeList = cursor.u16be();
        nameList_ = cursor.u16be();
        if (cursor.failed()) {
            fail(mapOffset_, "a resource map of 28 bytes");
            return;
        }
        ByteCursor types(map_);
        types.seek(typeList);
        // The count is kept less one, so that none at all is the largest.
        const auto typeCount = static_cast<std::uint16_t>(types.u16be() + 1U);
        for (unsigned i = 0; i < typeCount && !fault_; ++i) {
            const std::uint32_t type = types.u32be();
            const std::size_t count = types.u16be() + std::size_t{1};
            const std::size_t references = typeList + types.u16be();
            if (!types.failed()) {
                readReferences(type, count, references);
            }
        }
        if (types.failed()) {
            fail(mapOffset_ + std::min(typeList, map_.size()), "a list of types within the map");
        }
    }

    void readReferences(std::uint32_t type, std::size_t count, std::size_t offset) {
        if (count > map_.size() / referenceLength - fork_.resources.size()) {
            fail(mapOffset_, "no more references than the map has room for");
            return;
        }
        ByteCursor cursor(map_);
        cursor.seek(offset);
        for (std::size_t i = 0; i < count && !fault_; ++i) {
            const std::size_t place = mapOffset_ + cursor.position();
            ForkResource resource;
            resource.type = type;
            resource.number = static_cast<std::int16_t>(cursor.u16be());
            const std::uint16_t name = cursor.u16be();
            resource.attributes = cursor.u8();
            const std::size_t start = cursor.u24be();
            cursor.take(4);
            if (cursor.failed()) {
                fail(place, "a reference within the map");
                return;
            }
            readName(resource, name);
            readData(resource, start, place);
            fork_.resources.push_back(resource);
        }
    }

    void readName(ForkResource& resource, std::uint16_t offset) {
        if (offset == noName) {
            return;
        }
        ByteCursor cursor(map_);
        cursor.seek(nameList_ + offset);
        const auto name = cursor.take(cursor.u8());
        if (cursor.failed()) {
            fail(mapOffset_ + std::min(nameList_ + offset, map_.size()), "a name within the map");
            return;
        }
        resource.name = name;
    }

    void readData(ForkResource& resource, std::size_t start, std::size_t place) {
        ByteCursor cursor(data_);
        cursor.seek(start);
        resource.bytes = cursor.take(cursor.u32be());
        resource.offset = dataOffset_ + start + 4;
        if (cursor.failed()) {
            fail(place, "a resource within the fork's data");
        }
    }

    void fail(std::size_t offset, std::string_view expected) {
        if (!fault_) {
            fault_ = ForkFault{offset, expected};
        }
    }

    std::span<const std::byte> bytes_;
    std::span<const std::byte> data_;
    std::span<const std::byte> map_;
    std::size_t dataOffset_ = 0;
    std::size_t mapOffset_ = 0;
    std::size_t nameList_ = 0;
    ResourceFork fork_;
    std::optional<ForkFault> fault_;
};

} // namespace

std::string ForkResource::typeText() const {
    Data letters;
    for (unsigned i = 4; i > 0; --i) {
        letters.push_back(static_cast<std::byte>(type >> (8 * (i - 1))));
    }
    return textOfMacRoman(letters);
}

std::string ForkResource::nameText() const {
    return name ? textOfMacRoman(*name) : std::string();
}

const ForkResource* ResourceFork::find(std::uint32_t type, std::int16_t number) const {
    const ForkResource* first = nullptr;
    for (const ForkResource& resource : resources) {
        if (resource.type == type && resource.number == number) {
            return &resource;
        }
        if (resource.type == type && first == nullptr) {
            first = &resource;
        }
    }
    return first;
}

std::expected<ResourceFork, ForkFault> readResourceFork(std::span<const std::byte> bytes) {
    return bytes.empty() ? ResourceFork() : ForkReader(bytes).read();
}

} // namespace tolvane::platform
