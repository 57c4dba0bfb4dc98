#include "platform/linux/types/TypeIdentifier.h"

#include "platform/linux/types/DeclaredTypesText.h"
#include "platform/linux/types/DynamicTypeIdentifier.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

constexpr unsigned aliasFlag = 0x8000;
constexpr unsigned packageFlag = 0x2000;

using FinderInfo = std::array<std::byte, 32>;

FinderInfo finderInfo(unsigned flags, std::string_view typeCode = "") {
    FinderInfo info{};
    for (std::size_t index = 0; index < typeCode.size(); ++index) {
        info.at(index) = static_cast<std::byte>(typeCode[index]);
    }
    info[8] = static_cast<std::byte>(flags >> 8);
    info[9] = static_cast<std::byte>(flags & 0xFF);
    return info;
}

std::string typeOf(const ItemFacts& item) {
    return typeIdentifier(item, TypeTable::parse(declaredTypesText).value());
}

std::string typeOfFile(std::string_view name, std::span<const std::byte> info = {}) {
    return typeOf({.kind = ItemKind::regularFile, .name = name, .finderInfo = info});
}

std::string typeOfExecutable(std::string_view name, std::span<const std::byte> info = {}) {
    return typeOf({.kind = ItemKind::regularFile, .isExecutable = true, .name = name, .finderInfo = info});
}

std::string typeOfDirectory(std::string_view name, std::span<const std::byte> info = {}) {
    return typeOf({.kind = ItemKind::folder, .isExecutable = true, .name = name, .finderInfo = info});
}

TEST(TypeIdentifier, takesLinksAndSpecialFilesByTheirKindAlone) {
    const auto info = finderInfo(aliasFlag, "TEXT");
    const std::vector<std::pair<ItemKind, std::string>> kinds{
        {ItemKind::symbolicLink, "public.symlink"},
        {ItemKind::fifo, "public.named-pipe"},
        {ItemKind::socket, "public.socket"},
        {ItemKind::characterDevice, "public.character-special"},
        {ItemKind::blockDevice, "public.block-special"}};
    for (const auto& [kind, identifier] : kinds) {
        for (const auto* name : {"a", "a.png", "a.app"}) {
            EXPECT_EQ(typeOf({.kind = kind, .name = name}), identifier);
            EXPECT_EQ(typeOf({kind, true, true, name, info}), identifier) << "with all that others go by";
        }
    }
}

TEST(TypeIdentifier, takesADirectoryAtTheRootOfAVolumeForAVolume) {
    EXPECT_EQ(typeOf({.kind = ItemKind::folder, .isVolumeRoot = true, .name = "/"}), "public.volume");
    EXPECT_EQ(typeOf({.kind = ItemKind::folder, .isVolumeRoot = true, .name = "Disk.app"}), "public.volume");
    EXPECT_EQ(typeOf({.kind = ItemKind::regularFile, .isVolumeRoot = true, .name = "a.png"}), "public.png");
}

TEST(TypeIdentifier, takesTheDirectoryKindForAnAppFolder) {
    EXPECT_EQ(typeOfDirectory("Notes.rtfd"), "com.apple.rtfd");
    EXPECT_EQ(typeOfDirectory("x.bundle"), "com.apple.generic-bundle");
    EXPECT_EQ(typeOfDirectory("x.framework"), "com.apple.framework");
    EXPECT_EQ(typeOfDirectory("X.APP"), "com.apple.application-bundle");
}

TEST(TypeIdentifier, takesTheKindOfTheItemWhereBothDeclareAnExtension) {
    const std::vector<std::array<std::string, 3>> extensions{
        {"app", "com.apple.application-file", "com.apple.application-bundle"},
        {"pkg", "com.apple.installer-package-archive", "com.apple.installer-package"},
        {"mpkg", "com.apple.installer-package-archive", "com.apple.installer-meta-package"},
        {"pages", "com.apple.iwork.pages.sffpages", "com.apple.iWork.Pages.pages"},
        {"numbers", "com.apple.iWork.Numbers.sffnumbers", "com.apple.iWork.Numbers.numbers"},
        {"key", "com.apple.iwork.keynote.sffkey", "com.apple.iWork.Keynote.key"},
        {"kth", "com.apple.iwork.keynote.sffkth", "com.apple.iWork.Keynote.kth"},
        {"template", "com.apple.iWork.Pages.sfftemplate", "com.apple.iWork.Pages.template"},
        {"nmbtemplate", "com.apple.iWork.Numbers.sfftemplate", "com.apple.iWork.Numbers.template"},
        {"pkpass", "com.apple.pkpass-data", "com.apple.pkpass"},
        {"fs", "org.khronos.glsl.fragment-shader", "com.apple.file-system-plug-in"}};
    for (const auto& [extension, file, directory] : extensions) {
        EXPECT_EQ(typeOfFile("x." + extension), file);
        EXPECT_EQ(typeOfDirectory("x." + extension), directory);
    }
}

TEST(TypeIdentifier, makesADynamicPackageOfAFolderWithThePackageBit) {
    const auto info = finderInfo(packageFlag | 0x0400);
    EXPECT_EQ(decodeDynamicText(typeOfDirectory("x.Unknown", info)), "?0=com.apple.package:1=unknown");
    EXPECT_EQ(decodeDynamicText(typeOfDirectory("x.png", info)), "?0=com.apple.package:1=png")
        << "declared for files only";
    EXPECT_EQ(typeOfDirectory("x.app", info), "com.apple.application-bundle") << "declared for folders";
}

TEST(TypeIdentifier, takesAnyOtherFolderForAFolder) {
    for (const auto* name : {"Documents", "site.example", "pictures.png", ".app", "x.\xFF"}) {
        EXPECT_EQ(typeOfDirectory(name), "public.folder") << name;
    }
    EXPECT_EQ(typeOfDirectory("x.unknown", finderInfo(aliasFlag, "TEXT")), "public.folder");
    for (const auto* name : {"x", "x.", "x.a,b", "x.\xFF"}) {
        EXPECT_EQ(typeOfDirectory(name, finderInfo(packageFlag)), "public.folder")
            << name << " cannot stand in a package";
    }
}

TEST(TypeIdentifier, putsTheAliasBitBeforeTheExtension) {
    const auto info = finderInfo(aliasFlag | 0x0040, "TEXT");
    EXPECT_EQ(typeOfFile("a.png", info), "com.apple.alias-file");
    EXPECT_EQ(typeOfExecutable("a", info), "com.apple.alias-file");
    EXPECT_EQ(typeOfFile("a.\xFF", info), "com.apple.alias-file");
    EXPECT_EQ(typeOfFile("a.png", finderInfo(0x7FFF)), "public.png");
    EXPECT_EQ(typeOfFile("a.png", finderInfo(0x0080)), "public.png");
}

TEST(TypeIdentifier, ignoresFinderInformationOfAnotherLength) {
    const auto info = finderInfo(aliasFlag | packageFlag, "TEXT");
    const auto tooShort = std::span(info).first(31);
    std::array<std::byte, 33> tooLong{};
    std::ranges::copy(info, tooLong.begin());
    EXPECT_EQ(typeOfFile("a", tooShort), "public.data");
    EXPECT_EQ(typeOfFile("a", tooLong), "public.data");
    EXPECT_EQ(typeOfFile("a.png", tooLong), "public.png");
    EXPECT_EQ(typeOfDirectory("a.unknown", tooShort), "public.folder");
    EXPECT_EQ(typeOfFile("a", std::span(info).first(4)), "public.data");
}

TEST(TypeIdentifier, takesTheDeclaredTypeOfAFileExtension) {
    const std::vector<std::pair<std::string, std::string>> measured{
        {"mp4", "public.mpeg-4"},
        {"mpg4", "public.mpeg-4"},
        {"plist", "com.apple.property-list"},
        {"xml", "public.xml"},
        {"otf", "public.opentype-font"},
        {"otc", "public.opentype-collection-font"},
        {"smf", "public.midi-audio"},
        {"ipa", "com.apple.itunes.ipa"},
        {"usda", "com.pixar.universal-scene-description-utf8"},
        {"ts", "public.mpeg-2-transport-stream"},
        {"as", "com.apple.applesingle-archive"},
        {"r", "com.apple.rez-source"},
        {"abc", "public.alembic"},
        {"exp", "com.apple.symbol-export"},
        {"s", "public.assembly-source"},
        {"m", "public.objective-c-source"},
        {"log", "com.apple.log"},
        {"command", "com.apple.terminal.shell-script"},
        {"tool", "com.apple.terminal.shell-script"},
        {"txt", "public.plain-text"},
        {"png", "public.png"}};
    for (const auto& [extension, identifier] : measured) {
        EXPECT_EQ(typeOfFile("x." + extension), identifier);
    }
    EXPECT_EQ(typeOfFile("PHOTO.PnG"), "public.png");
    EXPECT_EQ(typeOfFile("archive.txt.png"), "public.png");
}

TEST(TypeIdentifier, putsTheExtensionBeforeTheExecuteBitAndTheTypeCode) {
    EXPECT_EQ(typeOfExecutable("a.png", finderInfo(0, "TEXT")), "public.png");
    EXPECT_EQ(typeOfExecutable("a.go", finderInfo(0, "TEXT")), "dyn.ah62d4rv4ge80s52");
}

TEST(TypeIdentifier, makesADynamicIdentifierOfAnUndeclaredFileExtension) {
    EXPECT_EQ(typeOfFile("wget-log.2"), "dyn.ah62d4rv4ge8xe");
    EXPECT_EQ(typeOfFile("main.lua"), "dyn.ah62d4rv4ge8027pb");
    EXPECT_EQ(typeOfFile("MAIN.LUA"), "dyn.ah62d4rv4ge8027pb");
    EXPECT_EQ(decodeDynamicText(typeOfFile("x.pluginPayloadAttachment")), "?0=6:1=pluginpayloadattachment");
    EXPECT_EQ(decodeDynamicText(typeOfFile("x.ÄÖ")), "?0=6:1=äö");
}

TEST(TypeIdentifier, doesNotGiveAFileTheTypeOfAPackage) {
    EXPECT_EQ(typeOfFile("x.scptd"), "dyn.ah62d4rv4ge81g25usvwa");
    EXPECT_EQ(typeOfFile("x.dist"), "dyn.ah62d4rv4ge80k4pxsu");
    EXPECT_EQ(typeOfFile("x.dist", finderInfo(packageFlag)), "dyn.ah62d4rv4ge80k4pxsu");
}

TEST(TypeIdentifier, goesByTheTextTypeCodeAndThenTheExecuteBitWithoutAnExtension) {
    EXPECT_EQ(typeOfFile("README", finderInfo(0, "TEXT")), "com.apple.traditional-mac-plain-text");
    EXPECT_EQ(typeOfExecutable("run", finderInfo(0, "TEXT")), "com.apple.traditional-mac-plain-text");
    for (const auto* otherCode : {"text", "TEX", "APPL", ""}) {
        EXPECT_EQ(typeOfFile("README", finderInfo(0, otherCode)), "public.data") << otherCode;
        EXPECT_EQ(typeOfExecutable("run", finderInfo(0, otherCode)), "public.unix-executable") << otherCode;
    }
    EXPECT_EQ(typeOfFile("run"), "public.data");
    EXPECT_EQ(typeOfExecutable("run"), "public.unix-executable");
}

TEST(TypeIdentifier, findsTheExtensionAfterTheLastDot) {
    EXPECT_EQ(extensionOfName("a.tar.GZ"), "GZ");
    EXPECT_EQ(extensionOfName("..a"), "a");
    EXPECT_EQ(extensionOfName("a. b"), " b");
    for (const auto* name : {"", "a", ".", "..", ".a", "a.", ".a."}) {
        EXPECT_EQ(extensionOfName(name), "") << name;
    }
}

TEST(TypeIdentifier, showsNoExtensionThatIsNotUtf8OrHasASeparator) {
    EXPECT_EQ(typeOfFile("a.\xFF"), "public.data");
    EXPECT_EQ(typeOfExecutable("a.p\xC3"), "public.unix-executable");
    EXPECT_EQ(typeOfFile("a.\xFF", finderInfo(0, "TEXT")), "public.data");
    EXPECT_EQ(typeOfFile("\xFF.png"), "public.png");
    for (const auto* name : {"a.b,c", "a.b:c", "a.b=c", "a.b\\c", "a.,"}) {
        EXPECT_EQ(typeOfFile(name), "public.data") << name;
        EXPECT_EQ(typeOfExecutable(name), "public.data") << name;
    }
}

TEST(TypeIdentifier, goesOnWithoutDeclarationsByTheRulesThatNeedNone) {
    const auto table = TypeTable::withoutDeclarations();
    const auto info = finderInfo(aliasFlag | packageFlag, "TEXT");
    const auto typeOfItem = [&](ItemKind kind, std::string_view name, bool isExecutable = false) {
        return typeIdentifier(
            {.kind = kind, .isExecutable = isExecutable, .name = name, .finderInfo = info}, table);
    };
    const ItemFacts volume{.kind = ItemKind::folder, .isVolumeRoot = true, .name = "/"};
    EXPECT_EQ(typeIdentifier(volume, table), "public.volume");
    EXPECT_EQ(typeOfItem(ItemKind::symbolicLink, "a.png"), "public.symlink");
    EXPECT_EQ(typeOfItem(ItemKind::fifo, "a"), "public.named-pipe");
    EXPECT_EQ(typeOfItem(ItemKind::folder, "a.app"), "public.folder");
    EXPECT_EQ(typeOfItem(ItemKind::folder, "a.unknown"), "public.folder");
    EXPECT_EQ(typeOfItem(ItemKind::regularFile, "a.md"), "dyn.ah62d4rv4ge8043a");
    EXPECT_EQ(typeOfItem(ItemKind::regularFile, "a", true), "public.unix-executable");
    EXPECT_EQ(typeOfItem(ItemKind::regularFile, "a"), "public.data");
}

} // namespace
} // namespace tolvane::platform
