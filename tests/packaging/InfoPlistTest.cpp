// What the bundle for macOS says about the program, as far as Linux can read it.
#include "platform/propertylist/PropertyList.h"
#include "tests/packaging/Help.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>

namespace tolvane::tests {
namespace {

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testing::HasSubstr;

/// The template, which is a property list before its places are filled.
Dictionary bundleInfo() {
    const std::string text = contentsOfFile(sourcePath("packaging/macos/Info.plist.in"));
    const auto list = platform::readPropertyList(std::as_bytes(std::span(text)));
    if (!list) {
        ADD_FAILURE() << "byte " << list.error().offset << ": " << list.error().expected;
        return {};
    }
    return *list->value.as<Dictionary>();
}

std::string textIn(const Dictionary& dictionary, std::string_view key) {
    const Value* const value = dictionary.find(key);
    return value == nullptr ? std::string() : *value->as<std::string>();
}

/// The only element of an array.
Dictionary onlyEntry(const Dictionary& dictionary, std::string_view key) {
    const Value* const value = dictionary.find(key);
    if (value == nullptr || value->as<Array>()->size() != 1) {
        ADD_FAILURE() << key;
        return {};
    }
    return *value->as<Array>()->front().as<Dictionary>();
}

const Value anyItem = Array{Value(std::string("public.item"))};

TEST(InfoPlist, namesTheProgramAsElsewhere) {
    const Dictionary info = bundleInfo();
    EXPECT_EQ(textIn(info, "CFBundleIdentifier"), "example.tolvane.tolvane");
    EXPECT_EQ(textIn(info, "CFBundlePackageType"), "APPL");
    EXPECT_EQ(textIn(info, "CFBundleIconFile") + ".iconset", "Tolvane.iconset");
}

TEST(InfoPlist, takesVersionAndSystemFromTheBuild) {
    const Dictionary info = bundleInfo();
    EXPECT_EQ(textIn(info, "CFBundleShortVersionString"), "@PROJECT_VERSION@");
    EXPECT_EQ(textIn(info, "CFBundleVersion"), "@PROJECT_VERSION@");
    EXPECT_EQ(textIn(info, "LSMinimumSystemVersion"), "@CMAKE_OSX_DEPLOYMENT_TARGET@");
}

TEST(InfoPlist, offersToViewAnyFileAndIsNoDefault) {
    const Dictionary type = onlyEntry(bundleInfo(), "CFBundleDocumentTypes");
    EXPECT_EQ(textIn(type, "CFBundleTypeRole"), "Viewer");
    EXPECT_EQ(textIn(type, "LSHandlerRank"), "None");
    ASSERT_NE(type.find("LSItemContentTypes"), nullptr);
    EXPECT_EQ(*type.find("LSItemContentTypes"), anyItem);
}

TEST(InfoPlist, namesTheMethodThatServesTheEntry) {
    const Dictionary service = onlyEntry(bundleInfo(), "NSServices");
    const std::string code = contentsOfFile(sourcePath("platform/macos/appkit/AppKitCalls.mm"));
    EXPECT_THAT(code, HasSubstr("- (void)" + textIn(service, "NSMessage") + ":(NSPasteboard*)"));
    EXPECT_EQ(textIn(service, "NSPortName"), textIn(bundleInfo(), "CFBundleName"));
    ASSERT_NE(service.find("NSSendFileTypes"), nullptr);
    EXPECT_EQ(*service.find("NSSendFileTypes"), anyItem);
}

TEST(InfoPlist, callsTheEntryAsOtherFileManagersDo) {
    const Dictionary service = onlyEntry(bundleInfo(), "NSServices");
    const Value* const title = service.find("NSMenuItem");
    ASSERT_NE(title, nullptr);
    EXPECT_THAT(
        contentsOfFile(sourcePath("packaging/menus/kde/example.tolvane.tolvane.desktop")),
        HasSubstr("Name=" + textIn(*title->as<Dictionary>(), "default") + "\n"));
}

} // namespace
} // namespace tolvane::tests
