#include "platform/linux/volumes/VolumeUUID.h"

#include "platform/linux/files/ItemStatus.h"
#include "platform/linux/volumes/CurrentMounts.h"
#include "tests/support/Mounting.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <optional>

namespace tolvane::platform {
namespace {

using tests::TemporaryFolder;

constexpr std::string_view knownUUID = "0FEDCBA9-8765-4321-8123-456789ABCDEF";
const std::string knownInLowerCase = "0fedcba9-8765-4321-8123-456789abcdef";

// Makes a file system in a file, mounts it and compares its UUID.
void expectUUIDOf(
    const std::vector<std::string>& maker,
    std::uintmax_t mebibytes,
    std::optional<std::string_view> expected = knownUUID) {
    const TemporaryFolder folder;
    const auto image = folder.file("image");
    const auto place = std::filesystem::canonical(folder.folder("place")).string();
    std::filesystem::resize_file(image, mebibytes * 1'024 * 1'024);
    tests::ProcessSetup making{.command = maker};
    making.command.push_back(image);
    if (tests::run(making).status != 0) {
        GTEST_SKIP() << maker.front() << " is not installed";
    }
    tests::expectWithMounts([&] {
        if (tests::run({.command = {"mount", "-o", "loop", image, place}}).status != 0) {
            return false;
        }
        const auto table = CurrentMounts().table().value();
        const Mount* const mount = table->topmostAt(place);
        EXPECT_TRUE(mount != nullptr && uuidOfMountedVolume(*mount) == expected);
        return true;
    });
}

TEST(VolumeUUID, isWrittenInCapitalsWithHyphens) {
    std::array<std::byte, 16> bytes{};
    EXPECT_EQ(uuidText(bytes), std::nullopt) << "zeros alone are no answer";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes.at(i) = static_cast<std::byte>(0xA0 + i);
    }
    EXPECT_EQ(uuidText(bytes), "A0A1A2A3-A4A5-A6A7-A8A9-AAABACADAEAF");
}

TEST(VolumeUUID, isReadInEitherCaseAndNotFromOtherTexts) {
    EXPECT_EQ(uuidInText(knownInLowerCase), knownUUID);
    EXPECT_EQ(uuidInText(knownUUID), knownUUID);
    for (const auto* text :
         {"", "1234-ABCD", "0123456789ABCDEF", "0fedcba9-8765-4321-8123-456789abcdeg",
          "0fedcba9-8765-4321-8123-456789abcde", "0fedcba9-8765-4321-8123-456789abcdef0",
          "0fedcba98-765-4321-8123-456789abcdef", "00000000-0000-0000-0000-000000000000",
          "2026-11-21-06-24-07-00"}) {
        EXPECT_EQ(uuidInText(text), std::nullopt) << text;
    }
}

TEST(VolumeUUID, isNoneOfAMountPointThatIsNoFolder) {
    const TemporaryFolder folder;
    const auto file = folder.file("file");
    const Mount mount{statusOfItem(file)->mountID.value_or(0), 0, 0, "/", file, "ext4", "", "", false};
    EXPECT_EQ(uuidOfMountedVolume(mount), std::nullopt);
    EXPECT_EQ(uuidOfMountedVolume({1, 0, 0, "/", folder.path("none"), "ext4", "", "", false}), std::nullopt);
}

TEST(VolumeUUID, isNotTakenFromAnotherMountAtTheSamePlace) {
    const auto table = CurrentMounts().table().value();
    const Mount* const root = table->topmostAt("/");
    if (root == nullptr || !statusOfItem("/")->mountID || !uuidOfMountedVolume(*root)) {
        GTEST_SKIP() << "the root volume here has no UUID";
    }
    Mount other = *root;
    other.id += 1'000'000;
    EXPECT_EQ(uuidOfMountedVolume(other), std::nullopt);
}

TEST(VolumeUUID, isThatOfAnExt4Volume) {
    expectUUIDOf({"mkfs.ext4", "-q", "-U", knownInLowerCase}, 8);
}

TEST(VolumeUUID, isThatOfAnXfsVolume) {
    expectUUIDOf({"mkfs.xfs", "-q", "-m", "uuid=" + knownInLowerCase}, 320);
}

TEST(VolumeUUID, isThatOfABtrfsVolume) {
    expectUUIDOf({"mkfs.btrfs", "-q", "-U", knownInLowerCase}, 128);
}

// Such a volume has a serial number of eight digits instead.
TEST(VolumeUUID, isNoneOfAFatVolume) {
    expectUUIDOf({"mkfs.vfat", "-i", "1234ABCD"}, 8, std::nullopt);
}

} // namespace
} // namespace tolvane::platform
