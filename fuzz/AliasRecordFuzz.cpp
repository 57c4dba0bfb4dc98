// Parses any bytes as an alias record.
#include "fuzz/Fuzz.h"
#include "platform/bookmark/format/AliasRecord.h"

namespace {

using namespace tolvane;

void check(const platform::AliasRecord& record, std::size_t size) {
    fuzz::require(record.version == 2 || record.version == 3, "a record has a known version");
    fuzz::require(record.length <= size, "a record lies within the bytes");
    std::size_t length = 0;
    for (const platform::AliasItem& item : record.items) {
        fuzz::require(item.offset + 4 + item.bytes.size() <= record.length, "a tag lies within its record");
        length += 4 + item.bytes.size();
    }
    fuzz::require(length <= record.length, "no byte belongs to two tags");
    const auto path = record.path();
    fuzz::require(!path || path->contains('/'), "a path has a slash");
    fuzz::require(record.diskImage.size() <= 1, "there is one disk image at most");
    for (const platform::AliasRecord& image : record.diskImage) {
        check(image, record.length);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = fuzz::bytesOf(data, size);
    const auto record = platform::readAliasRecord(bytes);
    if (!record) {
        fuzz::require(record.error().offset <= size, "a fault lies within the bytes");
        return 0;
    }
    check(*record, size);
    return 0;
}
