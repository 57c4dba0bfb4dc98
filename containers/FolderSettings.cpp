#include "containers/FolderSettings.h"

#include "platform/values/ByteCursor.h"
#include "platform/values/MacRoman.h"
#include "platform/values/Utf16Text.h"

#include <optional>
#include <set>

namespace tolvane::containers {

using namespace platform;

namespace {

/// Every address counts from here.
constexpr std::size_t origin = 4;

class SettingsReader {
public:
    explicit SettingsReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

    std::expected<std::vector<FolderSetting>, FolderSettingsFault> read() {
        readAddresses();
        if (const auto tree = fault_ ? std::nullopt : treeBlock()) {
            ByteCursor cursor(block(*tree));
            const std::uint32_t root = cursor.u32be();
            if (cursor.failed()) {
                fail(offsetOf(*tree), "the number of the tree's first block");
            } else {
                readNode(root);
            }
        }
        if (fault_) {
            return std::unexpected(*fault_);
        }
        return std::move(settings_);
    }

private:
    void readAddresses() {
        ByteCursor header(bytes_);
        header.take(8);
        const std::size_t offset = header.u32be();
        const std::size_t size = header.u32be();
        if (header.failed() || offset > bytes_.size() - origin) {
            fail(8, "the place of the table of blocks");
            return;
        }
        bookkeeping_ = bytes_.subspan(origin + offset, std::min(size, bytes_.size() - origin - offset));
        ByteCursor cursor(bookkeeping_);
        const std::size_t count = cursor.u32be();
        cursor.take(4);
        // There is room for a multiple of so many addresses.
        constexpr std::size_t step = 256;
        const std::size_t room = (count + step - 1) / step * step;
        if (cursor.failed() || count > cursor.remaining() / 4 || room > cursor.remaining() / 4) {
            fail(origin + offset, "no more blocks than the table has room for");
            return;
        }
        for (std::size_t i = 0; i < count; ++i) {
            addresses_.push_back(cursor.u32be());
        }
        cursor.take(4 * (room - count));
        contentsStart_ = cursor.position();
        tableOffset_ = origin + offset;
    }

    /// The block that the table of contents names "DSDB".
    std::optional<std::uint32_t> treeBlock() {
        ByteCursor cursor(bookkeeping_);
        cursor.seek(contentsStart_);
        const std::uint32_t count = cursor.u32be();
        for (std::uint32_t i = 0; i < count && !cursor.failed(); ++i) {
            const auto name = cursor.take(cursor.u8());
            const std::uint32_t number = cursor.u32be();
            if (!cursor.failed() && textOfMacRoman(name) == "DSDB") {
                return number;
            }
        }
        fail(tableOffset_ + contentsStart_, "an entry named DSDB");
        return std::nullopt;
    }

    std::size_t offsetOf(std::uint32_t number) const {
        constexpr std::uint32_t sizeBits = 0x1F;
        return number < addresses_.size() ? origin + (addresses_[number] & ~sizeBits) : 0;
    }

    /// The bytes of a block; none, with a fault, if it is not there or was read before.
    std::span<const std::byte> block(std::uint32_t number) {
        constexpr std::uint32_t sizeBits = 0x1F;
        const std::size_t offset = offsetOf(number);
        if (number >= addresses_.size() || addresses_[number] == 0 || offset > bytes_.size()) {
            fail(tableOffset_, "a block within the file");
            return {};
        }
        if (!read_.insert(number).second) {
            fail(offset, "a block that is read once");
            return {};
        }
        const std::size_t size =
            std::min(std::size_t{1} << (addresses_[number] & sizeBits), bytes_.size() - offset);
        readBytes_ += size;
        if (readBytes_ > bytes_.size()) {
            // Many blocks with the same records would take any amount of memory.
            fail(offset, "a block that overlaps no other");
            return {};
        }
        return bytes_.subspan(offset, size);
    }

    void readNode(std::uint32_t number) {
        constexpr unsigned deepestNode = 64;
        const auto bytes = block(number);
        if (fault_ || level_ == deepestNode) {
            fail(offsetOf(number), "a tree of at most 64 levels");
            return;
        }
        ByteCursor cursor(bytes);
        const std::uint32_t next = cursor.u32be();
        const std::uint32_t count = cursor.u32be();
        ++level_;
        for (std::uint32_t i = 0; i < count && !fault_; ++i) {
            if (next != 0) {
                const std::uint32_t child = cursor.u32be();
                if (!cursor.failed()) {
                    readNode(child);
                }
            }
            readRecord(cursor, offsetOf(number));
        }
        if (next != 0 && !fault_) {
            readNode(next);
        }
        --level_;
    }

    void readRecord(ByteCursor& cursor, std::size_t blockOffset) {
        const std::size_t place = blockOffset + cursor.position();
        FolderSetting setting;
        setting.name = textOfBigEndianUtf16(cursor.take(std::size_t{2} * cursor.u32be()));
        setting.code = textOfMacRoman(cursor.take(4));
        setting.type = textOfMacRoman(cursor.take(4));
        if (cursor.failed()) {
            fail(place, "a record within its block");
            return;
        }
        const std::optional<std::size_t> length = valueLength(setting.type, cursor);
        if (!length) {
            fail(place, "a record of a known type");
            return;
        }
        setting.value = cursor.take(*length);
        if (cursor.failed()) {
            fail(place, "a value within its block");
            return;
        }
        settings_.push_back(std::move(setting));
    }

    static std::optional<std::size_t> valueLength(std::string_view type, ByteCursor& cursor) {
        if (type == "bool") {
            return 1;
        }
        if (type == "long" || type == "shor" || type == "type") {
            return 4;
        }
        if (type == "comp" || type == "dutc") {
            return 8;
        }
        if (type == "blob") {
            return cursor.u32be();
        }
        return type == "ustr" ? std::optional(std::size_t{2} * cursor.u32be()) : std::nullopt;
    }

    void fail(std::size_t offset, std::string_view expected) {
        if (!fault_) {
            fault_ = FolderSettingsFault{std::min(offset, bytes_.size()), expected};
        }
    }

    std::span<const std::byte> bytes_;
    std::span<const std::byte> bookkeeping_;
    std::size_t tableOffset_ = 0;
    std::size_t contentsStart_ = 0;
    std::vector<std::uint32_t> addresses_;
    std::set<std::uint32_t> read_; ///< The blocks that were read.
    std::size_t readBytes_ = 0;    ///< In all of them.
    unsigned level_ = 0;
    std::vector<FolderSetting> settings_;
    std::optional<FolderSettingsFault> fault_;
};

} // namespace

bool isLikeFolderSettings(std::span<const std::byte> bytes) {
    ByteCursor cursor(bytes);
    constexpr std::uint32_t letters = 0x4275'6431; // "Bud1"
    return cursor.u32be() == 1 && cursor.u32be() == letters;
}

std::expected<std::vector<FolderSetting>, FolderSettingsFault> readFolderSettings(
    std::span<const std::byte> bytes) {
    if (!isLikeFolderSettings(bytes)) {
        return std::unexpected(FolderSettingsFault{0, "the letters Bud1 after a 1"});
    }
    return SettingsReader(bytes).read();
}

} // namespace tolvane::containers
