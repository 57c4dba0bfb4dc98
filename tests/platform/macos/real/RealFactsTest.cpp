// Sizes, attributes, dates and types beside what stat, xattr, mdls, GetFileInfo and SetFile say.
#include "tests/platform/macos/real/RealMac.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace tolvane::tests::macos {

using namespace platform;

class RealFacts : public RealMac {
protected:
    Dictionary attributes(const std::string& path) const {
        const auto found = system.fileManager->attributesOfItemAtPath(path);
        EXPECT_TRUE(found) << path << ": " << found.error().localizedDescription();
        return found.value_or(Dictionary());
    }

    std::optional<Value> resource(const std::string& path, std::string_view key) const {
        const std::array keys{key};
        const auto found = system.resources->resourceValuesForKeys(urlOf(path), keys);
        EXPECT_TRUE(found) << path << ": " << found.error().localizedDescription();
        const Value* value = found ? found->find(key) : nullptr;
        return value == nullptr ? std::nullopt : std::optional(*value);
    }

    template <typename T>
    static std::optional<T> as(const std::optional<Value>& value) {
        const T* found = value ? value->template as<T>() : nullptr;
        return found == nullptr ? std::nullopt : std::optional(*found);
    }

    static std::optional<Value> in(const Dictionary& values, std::string_view key) {
        const Value* value = values.find(key);
        return value == nullptr ? std::nullopt : std::optional(*value);
    }

    static std::int64_t number(const Dictionary& values, std::string_view key) {
        const auto value = in(values, key);
        return value ? value->exactInt64().value_or(-1) : -1;
    }

    std::optional<Data> attribute(const std::string& path, const char* name) const {
        const auto size = system.attributeCalls->getxattr(path.c_str(), name, {});
        if (!size) {
            return std::nullopt;
        }
        Data bytes(static_cast<std::size_t>(*size));
        return system.attributeCalls->getxattr(path.c_str(), name, bytes) == size ? std::optional(bytes)
                                                                                  : std::nullopt;
    }
};

TEST_F(RealFacts, numbersAreThoseOfStat) {
    const std::string file = folder.file("a.txt", "hello, world");
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    for (const auto& path :
         {file, folder.folder("b"), folder.symlink("link", "a.txt"), folder.fifo("fifo"), std::string("/"),
          std::string("/dev/null"), std::string("/Applications")}) {
        const Dictionary found = attributes(path);
        EXPECT_EQ(number(found, NSFileSize), statSays(path, "%z")) << path;
        EXPECT_EQ(number(found, NSFileSystemNumber), statSays(path, "%d")) << path;
        EXPECT_EQ(number(found, NSFileSystemFileNumber), statSays(path, "%i")) << path;
        EXPECT_EQ(number(found, NSFileOwnerAccountID), statSays(path, "%u")) << path;
        EXPECT_EQ(number(found, NSFileGroupOwnerAccountID), statSays(path, "%g")) << path;
        EXPECT_EQ(number(found, NSFileReferenceCount), statSays(path, "%l")) << path;
        const std::string permissions = "0" + said({"/usr/bin/stat", "-f", "%Mp%Lp", path});
        EXPECT_EQ(number(found, NSFilePosixPermissions), std::stoll(permissions, nullptr, 8)) << path;
    }
}

TEST_F(RealFacts, ownerAndGroupAreThoseOfStat) {
    const std::string file = folder.file("a");
    const Dictionary found = attributes(file);
    EXPECT_EQ(as<std::string>(in(found, NSFileOwnerAccountName)), said({"/usr/bin/stat", "-f", "%Su", file}));
    EXPECT_EQ(
        as<std::string>(in(found, NSFileGroupOwnerAccountName)), said({"/usr/bin/stat", "-f", "%Sg", file}));
}

TEST_F(RealFacts, datesAreThoseThatSetFileSetAndGetFileInfoPrints) {
    const std::string file = folder.file("a");
    said({"SetFile", "-d", "08/09/2023 18:27:02", "-m", "02/03/2024 04:05:06", file});
    const Dictionary found = attributes(file);
    const auto created = as<Date>(in(found, NSFileCreationDate));
    const auto modified = as<Date>(in(found, NSFileModificationDate));
    ASSERT_TRUE(created && modified);
    EXPECT_EQ(created->unixSeconds(), secondsOfLocalTime("08/09/2023 18:27:02"));
    EXPECT_EQ(created->unixSeconds(), secondsOfLocalTime(said({"GetFileInfo", "-d", file})));
    EXPECT_EQ(created->unixSeconds(), statSays(file, "%B"));
    EXPECT_EQ(modified->unixSeconds(), secondsOfLocalTime(said({"GetFileInfo", "-m", file})));
    EXPECT_EQ(modified->unixSeconds(), statSays(file, "%m"));
    EXPECT_EQ(as<Date>(resource(file, NSURLCreationDateKey)), created);
    const auto changed = as<Date>(resource(file, NSURLAttributeModificationDateKey));
    ASSERT_TRUE(changed);
    EXPECT_EQ(changed->unixSeconds(), statSays(file, "%c"));
}

TEST_F(RealFacts, extendedAttributesAreThoseOfXattr) {
    const std::string file = folder.file("a");
    said({"/usr/bin/xattr", "-w", "com.example.note", "hello", file});
    said({"/usr/bin/xattr", "-wx", "com.example.bytes", "00 FF 0A", file});
    const auto size = system.attributeCalls->listxattr(file.c_str(), {});
    ASSERT_TRUE(size);
    std::string names(static_cast<std::size_t>(*size), '?');
    EXPECT_EQ(system.attributeCalls->listxattr(file.c_str(), names), size);
    for (const std::string& name : wordsOf(said({"/usr/bin/xattr", file}))) {
        EXPECT_TRUE((std::string(1, '\0') + names).contains('\0' + name + '\0')) << name;
        EXPECT_EQ(attribute(file, name.c_str()), bytesOfHex(said({"/usr/bin/xattr", "-px", name, file})))
            << name;
    }
    EXPECT_EQ(attribute(file, "com.example.bytes"), (Data{std::byte{0}, std::byte{0xFF}, std::byte{10}}));
}

TEST_F(RealFacts, finderInformationIsWhatSetFileSet) {
    const std::string file = folder.file("a");
    said({"SetFile", "-t", "TEXT", "-c", "ttxt", "-a", "V", file});
    const auto information = attribute(file, "com.apple.FinderInfo");
    ASSERT_TRUE(information);
    ASSERT_EQ(information->size(), 32U);
    std::string typeAndCreator;
    for (std::size_t index = 0; index < 8; ++index) {
        typeAndCreator += static_cast<char>(information->at(index));
    }
    EXPECT_EQ(typeAndCreator, "TEXTttxt");
    EXPECT_EQ(information->at(8) & std::byte{0x40}, std::byte{0x40}) << "the item is invisible";
    EXPECT_EQ(said({"GetFileInfo", "-t", file}), "\"TEXT\"");
}

TEST_F(RealFacts, theResourceForkCountsInTheTotalSize) {
    const std::string file = folder.file("a", "hello");
    said({"/usr/bin/xattr", "-wx", "com.apple.ResourceFork", "01 02 03", file});
    EXPECT_EQ(resource(file, NSURLFileSizeKey), Value(std::int64_t{5}));
    EXPECT_EQ(resource(file, NSURLTotalFileSizeKey), Value(std::int64_t{8}));
}

// Not in the usual folder for temporary files, which the search of the system leaves out.
TEST_F(RealFacts, typesAreThoseOfMdls) {
    const TemporaryFolder home(system.session->homeDirectory().path());
    int compared = 0;
    for (const auto& path :
         {home.file("a.txt"), home.file("b.pdf"), home.folder("c"), home.file("d.swift"),
          home.file("e.nonsense"), std::string("/Applications/Utilities/Terminal.app")}) {
        const std::string type = said({"/usr/bin/mdls", "-raw", "-name", "kMDItemContentType", path});
        if (type != "(null)") {
            ++compared;
            EXPECT_EQ(as<std::string>(resource(path, NSURLTypeIdentifierKey)), type) << path;
        }
    }
    if (compared == 0) {
        GTEST_SKIP() << "mdls knows no types here: is the volume indexed?";
    }
}

TEST_F(RealFacts, kindsThatTheProgramLeavesOutAreNoneOfThoseItShows) {
    const Dictionary found = attributes(folder.file("a"));
    for (const auto key :
         {NSFileSize, NSFilePosixPermissions, NSFileSystemNumber, NSFileSystemFileNumber,
          NSFileOwnerAccountName, NSFileOwnerAccountID, NSFileGroupOwnerAccountName,
          NSFileGroupOwnerAccountID, NSFileCreationDate, NSFileModificationDate, NSFileType,
          NSFileReferenceCount}) {
        EXPECT_TRUE(in(found, key)) << key;
    }
    EXPECT_TRUE(resource(folder.path("a"), NSURLFileResourceIdentifierKey))
        << "the identifier is neither data nor anything else that Value knows";
}

} // namespace tolvane::tests::macos
