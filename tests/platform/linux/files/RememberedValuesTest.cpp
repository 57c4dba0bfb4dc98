// The values by which an opened item is known again.
#include "platform/linux/files/LinuxURLResources.h"
#include "platform/services/DocumentOpening.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace tolvane::tests {
namespace {

using platform::URL;

class RememberedValues : public testing::Test {
protected:
    platform::Dictionary valuesOf(const std::string& path) const {
        return resources.resourceValuesForKeys(URL::fileURLWithPath(path), platform::rememberedKeys)
            .value_or(platform::Dictionary());
    }

    TemporaryFolder folder;
    platform::TypeTable types = platform::TypeTable::withoutDeclarations();
    platform::LinuxURLResources resources{types};
};

TEST_F(RememberedValues, areTheSameWhileNothingChanges) {
    const std::string path = folder.file("a", "1");
    const auto before = valuesOf(path);
    EXPECT_NE(before.find(platform::NSURLFileResourceIdentifierKey), nullptr);
    EXPECT_NE(before.find(platform::NSURLAttributeModificationDateKey), nullptr);
    EXPECT_EQ(contentsOfFile(path), "1");
    EXPECT_EQ(valuesOf(path), before) << "reading is no change";
}

TEST_F(RememberedValues, tellOfEveryKindOfChange) {
    const std::string path = folder.file("a", "1");
    const auto* const key = "NSURLAttributeModificationDateKey";
    const auto dateOf = [&] {
        return valuesOf(path).find(key)->as<platform::Date>()->timeIntervalSinceReferenceDate();
    };
    // The file system's clock ticks more slowly than this runs.
    const auto changes = [&](const auto& change) {
        const double before = dateOf();
        for (int i = 0; i < 10'000 && dateOf() == before; ++i) {
            change();
        }
        return dateOf() != before;
    };
    EXPECT_TRUE(changes([&] { folder.file("a", "2"); }));
    EXPECT_TRUE(changes([&] { EXPECT_EQ(chmod(path.c_str(), 0600), 0); }));
    EXPECT_TRUE(changes([&] { std::filesystem::last_write_time(path, std::filesystem::file_time_type{}); }))
        << "even where the other date is set back";
}

TEST_F(RememberedValues, areThoseOfALinkItself) {
    const std::string target = folder.file("a", "1");
    const std::string link = folder.symlink("link", "a");
    const auto before = valuesOf(link);
    EXPECT_EQ(chmod(target.c_str(), 0600), 0);
    folder.file("a", "longer");
    EXPECT_EQ(valuesOf(link), before);
    EXPECT_NE(valuesOf(target), before);
}

} // namespace
} // namespace tolvane::tests
