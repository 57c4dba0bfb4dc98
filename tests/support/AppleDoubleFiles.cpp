#include "tests/support/AppleDoubleFiles.h"

#include "platform/values/ByteCursor.h"

#include <algorithm>

namespace tolvane::tests {

using namespace platform;

void appendBigEndianTo(Data& out, std::uint64_t number, std::size_t width) {
    for (std::size_t i = width; i > 0; --i) {
        out.push_back(static_cast<std::byte>(number >> (8 * (i - 1))));
    }
}

void appendWideTextTo(Data& out, std::string_view ascii) {
    for (const char letter : ascii) {
        appendBigEndianTo(out, static_cast<unsigned char>(letter), 2);
    }
}

Data companionFile(const std::vector<CompanionEntry>& entries, std::uint32_t version, std::uint32_t magic) {
    Data file;
    appendBigEndianTo(file, magic, 4);
    appendBigEndianTo(file, version, 4);
    appendText(file, "Mac OS X        ");
    appendBigEndianTo(file, entries.size(), 2);
    std::size_t offset = 26 + 12 * entries.size();
    for (const CompanionEntry& entry : entries) {
        appendBigEndianTo(file, entry.identifier, 4);
        appendBigEndianTo(file, offset, 4);
        appendBigEndianTo(file, entry.bytes.size(), 4);
        offset += entry.bytes.size();
    }
    for (const CompanionEntry& entry : entries) {
        appendBytes(file, entry.bytes);
    }
    return file;
}

Data companionFileWithAttributes(
    const std::vector<CompanionAttribute>& attributes, const Data& resourceFork) {
    constexpr std::size_t entryStart = 50;
    const auto paddedLength = [](const CompanionAttribute& attribute) {
        return (11 + attribute.name.size() + 1 + 3) / 4 * 4;
    };
    std::size_t valueStart = entryStart + 70;
    std::size_t valuesLength = 0;
    for (const CompanionAttribute& attribute : attributes) {
        valueStart += paddedLength(attribute);
        valuesLength += attribute.value.size();
    }
    Data info;
    appendText(info, "TEXTttxt");
    info.resize(34);
    appendText(info, "ATTR");
    appendBigEndianTo(info, 0x1234, 4);
    appendBigEndianTo(info, valueStart + valuesLength, 4);
    appendBigEndianTo(info, valueStart, 4);
    appendBigEndianTo(info, valuesLength, 4);
    info.resize(info.size() + 12);
    appendBigEndianTo(info, 0, 2);
    appendBigEndianTo(info, attributes.size(), 2);
    std::size_t offset = valueStart;
    for (const CompanionAttribute& attribute : attributes) {
        const std::size_t end = info.size() + paddedLength(attribute);
        appendBigEndianTo(info, attribute.value.empty() ? 0 : offset, 4);
        appendBigEndianTo(info, attribute.value.size(), 4);
        appendBigEndianTo(info, 0, 2);
        appendBigEndianTo(info, attribute.name.size() + 1, 1);
        appendText(info, attribute.name);
        info.resize(end);
        offset += attribute.value.size();
    }
    for (const CompanionAttribute& attribute : attributes) {
        appendText(info, attribute.value);
    }
    return companionFile({{9, info}, {2, resourceFork}});
}

Data resourceForkOf(const std::vector<WrittenResource>& resources) {
    std::vector<std::string> types;
    for (const WrittenResource& resource : resources) {
        if (std::ranges::find(types, resource.type) == types.end()) {
            types.push_back(resource.type);
        }
    }
    Data data;
    Data typeList;
    Data references;
    Data names;
    appendBigEndianTo(typeList, types.size() - 1, 2);
    for (const std::string& type : types) {
        const auto count = std::ranges::count(resources, type, &WrittenResource::type);
        appendText(typeList, type);
        appendBigEndianTo(typeList, static_cast<std::uint64_t>(count) - 1, 2);
        appendBigEndianTo(typeList, 2 + 8 * types.size() + references.size(), 2);
        for (const WrittenResource& resource : resources) {
            if (resource.type != type) {
                continue;
            }
            appendBigEndianTo(references, static_cast<std::uint64_t>(resource.number), 2);
            appendBigEndianTo(references, resource.name ? names.size() : 0xFFFF, 2);
            appendBigEndianTo(references, resource.attributes, 1);
            appendBigEndianTo(references, data.size(), 3);
            appendBigEndianTo(references, 0, 4);
            appendBigEndianTo(data, resource.bytes.size(), 4);
            appendBytes(data, resource.bytes);
            if (resource.name) {
                appendBigEndianTo(names, resource.name->size(), 1);
                appendText(names, *resource.name);
            }
        }
    }
    Data map(24);
    appendBigEndianTo(map, 28, 2);
    appendBigEndianTo(map, 28 + typeList.size() + references.size(), 2);
    appendBytes(map, typeList);
    appendBytes(map, references);
    appendBytes(map, names);

    Data fork;
    appendBigEndianTo(fork, 256, 4);
    appendBigEndianTo(fork, 256 + data.size(), 4);
    appendBigEndianTo(fork, data.size(), 4);
    appendBigEndianTo(fork, map.size(), 4);
    fork.resize(256);
    appendBytes(fork, data);
    appendBytes(fork, map);
    return fork;
}

} // namespace tolvane::tests
