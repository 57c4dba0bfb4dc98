#include "tests/support/OldAliasFiles.h"

#include "platform/values/ByteCursor.h"

#include <cstddef>
#include <cstdint>

namespace tolvane::tests {

using namespace platform;

namespace {

void appendBigEndian(Data& out, std::uint64_t number, std::size_t width) {
    for (std::size_t i = width; i > 0; --i) {
        out.push_back(static_cast<std::byte>(number >> (8 * (i - 1))));
    }
}

} // namespace

Data aliasBytes(unsigned version, unsigned kind, std::string_view volume) {
    Data bytes;
    appendBigEndian(bytes, 0, 4);
    appendBigEndian(bytes, 150, 2);
    appendBigEndian(bytes, version, 2);
    appendBigEndian(bytes, kind, 2);
    appendBigEndian(bytes, volume.size(), 1);
    appendText(bytes, volume);
    bytes.resize(150);
    return bytes;
}

Data forkWith(const std::vector<Resource>& resources) {
    Data data;
    appendBigEndian(data, 2, 4);
    appendBigEndian(data, 0xBEEF, 2);
    Data references;
    for (const Resource& resource : resources) {
        appendBigEndian(references, resource.number, 2);
        appendBigEndian(references, 0xFFFF, 2);
        appendBigEndian(references, 0, 1);
        appendBigEndian(references, data.size(), 3);
        appendBigEndian(references, 0, 4);
        appendBigEndian(data, resource.bytes.size(), 4);
        appendBytes(data, resource.bytes);
    }
    Data icon;
    appendBigEndian(icon, 0xBFB9, 2);
    appendBigEndian(icon, 0xFFFF, 2);
    icon.resize(12);

    Data map(24);
    appendBigEndian(map, 28, 2);
    map.resize(28);
    appendBigEndian(map, 1, 2);
    appendText(map, "icns");
    appendBigEndian(map, 0, 2);
    appendBigEndian(map, 18, 2);
    appendText(map, "alis");
    appendBigEndian(map, resources.size() - 1, 2);
    appendBigEndian(map, 30, 2);
    appendBytes(map, icon);
    appendBytes(map, references);

    Data fork;
    appendBigEndian(fork, 256, 4);
    appendBigEndian(fork, 256 + data.size(), 4);
    appendBigEndian(fork, data.size(), 4);
    appendBigEndian(fork, map.size(), 4);
    fork.resize(256);
    appendBytes(fork, data);
    appendBytes(fork, map);
    return fork;
}

std::string_view textOf(const Data& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace tolvane::tests
