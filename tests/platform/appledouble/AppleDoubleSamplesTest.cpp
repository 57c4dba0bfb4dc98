// Companion files that Macs made.
#include "platform/appledouble/AppleDouble.h"
#include "platform/appledouble/ResourceFork.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/SharedSamples.h"

namespace tolvane::platform {
namespace {

using namespace tests;

class AppleDoubleSamples : public SharedSamples {
protected:
    AppleDoubleSamples() : SharedSamples("attributes/appledouble") {}
};

/// Files from an Apple II have forks of another layout; those of a Mac have their data at 256.
bool isMacFork(std::span<const std::byte> fork) {
    return fork.size() >= 4 && fork[2] == std::byte{1} && fork[3] == std::byte{0};
}

/// "9@50+156 2@206+0", as the table of samples lists parts.
std::string partsOf(const AppleDouble& file, const Data& bytes) {
    std::string text;
    for (std::size_t i = 0; i < file.entries.size(); ++i) {
        const AppleDoubleEntry& entry = file.entries[i];
        // Where a part is empty its length can only be 0.
        text += (text.empty() ? "" : " ") + std::to_string(entry.identifier) + "@"
                + std::to_string(entry.offset) + "+" + std::to_string(entry.bytes.size());
        EXPECT_TRUE(entry.bytes.empty() || entry.bytes.data() == bytes.data() + entry.offset);
    }
    return text;
}

/// "com.example.a(1); com.example.b(20)".
std::string attributesOf(const AppleDoubleAttributes& block) {
    std::string text;
    for (const AppleDoubleAttribute& attribute : block.attributes) {
        text += (text.empty() ? "" : "; ") + std::string(attribute.name) + "("
                + std::to_string(attribute.value.size()) + ")";
    }
    return text;
}

TEST_F(AppleDoubleSamples, haveThePartsAndAttributesOfTheirTable) {
    const auto rows = rowsOf("SOURCES.tsv", 9);
    EXPECT_EQ(rows.size(), 34U);
    std::size_t forks = 0;
    for (const auto& columns : rows) {
        SCOPED_TRACE(columns[0]);
        const Data contents = bytes(columns[0]);
        const auto file = readAppleDouble(contents);
        ASSERT_TRUE(file) << file.error().expected << " at " << file.error().offset;
        EXPECT_EQ(file->form == AppleDoubleForm::single ? "AppleSingle" : "AppleDouble", columns[3]);
        EXPECT_EQ(file->version, std::stoul(columns[4], nullptr, 16));
        EXPECT_EQ(partsOf(*file, contents), columns[6]);
        const auto block = readAppleDoubleAttributes(*file, contents);
        ASSERT_TRUE(block) << block.error().expected << " at " << block.error().offset;
        EXPECT_EQ(attributesOf(*block), columns[8]);
        const AppleDoubleEntry* const fork = file->entry(apple_double_entry::resourceFork);
        if (fork != nullptr && isMacFork(fork->bytes)) {
            const auto resources = readResourceFork(fork->bytes);
            ++forks;
            EXPECT_TRUE(resources) << resources.error().expected << " at " << resources.error().offset;
        }
    }
    EXPECT_EQ(forks, 3U);
}

TEST_F(AppleDoubleSamples, ofAnInternetLocationHaveItsAddressAsResource) {
    const std::filesystem::path companions = folder / "../../carriers/appledouble";
    for (const auto& file : std::filesystem::directory_iterator(companions)) {
        const Data bytes = bytesOf(contentsOfFile(file.path()));
        const auto companion = readAppleDouble(bytes);
        ASSERT_TRUE(companion);
        const auto* const part = companion->entry(apple_double_entry::resourceFork);
        ASSERT_NE(part, nullptr);
        const auto fork = readResourceFork(part->bytes);
        ASSERT_TRUE(fork) << fork.error().expected << " at " << fork.error().offset;
        const auto* const url = fork->find(resourceType("url "), 256);
        ASSERT_NE(url, nullptr);
        EXPECT_TRUE(textOfBytes(url->bytes).starts_with("http"));
    }
}

} // namespace
} // namespace tolvane::platform
