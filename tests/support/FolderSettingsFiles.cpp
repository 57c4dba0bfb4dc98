#include "tests/support/FolderSettingsFiles.h"

#include "platform/values/ByteCursor.h"
#include "tests/support/AppleDoubleFiles.h"

#include <span>

namespace tolvane::tests {

using namespace platform;

namespace {

constexpr std::size_t blockSize = 4096;
constexpr unsigned blockSizeBits = 12;

void appendRecord(Data& out, const WrittenSetting& setting) {
    appendBigEndianTo(out, setting.name.size(), 4);
    appendWideTextTo(out, setting.name);
    appendText(out, setting.code);
    appendText(out, setting.type);
    appendBytes(out, setting.value);
}

Data leaf(std::span<const WrittenSetting> settings) {
    Data node;
    appendBigEndianTo(node, 0, 4);
    appendBigEndianTo(node, settings.size(), 4);
    for (const WrittenSetting& setting : settings) {
        appendRecord(node, setting);
    }
    return node;
}

} // namespace

WrittenSetting blobSetting(std::string name, std::string code, const Data& bytes) {
    Data value;
    appendBigEndianTo(value, bytes.size(), 4);
    appendBytes(value, bytes);
    return {std::move(name), std::move(code), "blob", std::move(value)};
}

WrittenSetting textSetting(std::string name, std::string code, const std::string& text) {
    Data value;
    appendBigEndianTo(value, text.size(), 4);
    appendWideTextTo(value, text);
    return {std::move(name), std::move(code), "ustr", std::move(value)};
}

Data folderSettingsFile(const std::vector<WrittenSetting>& settings) {
    // Block 0 is the table of blocks, 1 what the tree begins with, 2 its first block.
    std::vector<Data> blocks(2);
    const std::span<const WrittenSetting> all(settings);
    if (all.size() <= 3) {
        blocks.push_back(leaf(all));
    } else {
        Data above;
        appendBigEndianTo(above, 4, 4);
        appendBigEndianTo(above, 1, 4);
        appendBigEndianTo(above, 3, 4);
        appendRecord(above, all[1]);
        blocks.push_back(above);
        blocks.push_back(leaf(all.first(1)));
        blocks.push_back(leaf(all.subspan(2)));
    }
    Data& tree = blocks[1];
    appendBigEndianTo(tree, 2, 4);
    appendBigEndianTo(tree, all.size() <= 3 ? 0 : 1, 4);
    appendBigEndianTo(tree, 0, 4); // The number of records, which is not to be relied on.
    appendBigEndianTo(tree, blocks.size() - 2, 4);
    appendBigEndianTo(tree, blockSize, 4);

    const auto addressOf = [](std::size_t block) { return blockSize * (block + 1) | blockSizeBits; };
    Data& table = blocks[0];
    appendBigEndianTo(table, blocks.size(), 4);
    appendBigEndianTo(table, 0, 4);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        appendBigEndianTo(table, addressOf(i), 4);
    }
    table.resize(8 + 4 * std::size_t{256});
    appendBigEndianTo(table, 1, 4);
    appendBigEndianTo(table, 4, 1);
    appendText(table, "DSDB");
    appendBigEndianTo(table, 1, 4);
    table.resize(table.size() + 4 * std::size_t{32});

    Data file;
    appendBigEndianTo(file, 1, 4);
    appendText(file, "Bud1");
    appendBigEndianTo(file, blockSize, 4);
    appendBigEndianTo(file, table.size(), 4);
    appendBigEndianTo(file, blockSize, 4);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        file.resize(4 + blockSize * (i + 1));
        appendBytes(file, blocks[i]);
    }
    file.resize(4 + blockSize * (blocks.size() + 1));
    return file;
}

} // namespace tolvane::tests
