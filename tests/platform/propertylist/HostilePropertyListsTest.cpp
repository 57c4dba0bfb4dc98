// Every list of the corpus cut off after every byte, and with every byte changed in several ways, is a list
// that can be written and read again, or has a fault within the bytes.
#include "platform/values/Utf8.h"
#include "tests/platform/propertylist/Reading.h"
#include "tests/support/PropertyListWriters.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tolvane::platform {
namespace {

using namespace tests;

template <typename Change>
void forEachList(const Change& change) {
    std::size_t lists = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(TOLVANE_SOURCE_DIR "/tests/data/property-lists")) {
        const std::string bytes = contentsOfFile(file.path());
        constexpr std::size_t longest = 2000;
        // Most changes of this one give lists that are as large as a list may be: each would take a second.
        const bool isSlow = file.path().filename() == "bad-shared-too-often.binary";
        if (bytes.size() <= longest && !isSlow) {
            SCOPED_TRACE(file.path().filename().string());
            change(bytes);
            ++lists;
        }
    }
    EXPECT_GT(lists, 50U);
}

void expectListOrFault(const std::string& bytes) {
    const auto list = readList(bytes);
    if (!list) {
        EXPECT_LE(list.error().offset, bytes.size());
        EXPECT_FALSE(list.error().expected.empty());
        return;
    }
    const auto written = binaryPropertyList(list->value);
    ASSERT_TRUE(written);
    EXPECT_EQ(binaryPropertyList(listValue(*written, PropertyListForm::binary)), written);
    EXPECT_TRUE(isValidUtf8(description(list->value)));
}

TEST(HostilePropertyLists, areNoneWhereABinaryOneIsCutOff) {
    forEachList([](const std::string& bytes) {
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const std::string start = bytes.substr(0, length);
            if (start.starts_with("bplist")) {
                EXPECT_LE(listFault(start).offset, length);
            } else {
                expectListOrFault(start);
            }
        }
    });
}

TEST(HostilePropertyLists, areReadOrRefusedWhateverByteIsChanged) {
    forEachList([](const std::string& bytes) {
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            for (const unsigned change : {1U, 2U, 0x10U, 0x20U, 0x80U, 0xFFU}) {
                std::string changed = bytes;
                changed[i] = static_cast<char>(static_cast<unsigned char>(changed[i]) ^ change);
                expectListOrFault(changed);
            }
        }
    });
}

} // namespace
} // namespace tolvane::platform
