#include "platform/linux/types/TypeTable.h"

#include "platform/linux/types/DeclaredTypesText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

const std::string header = "identifier\textensions\tmime-types\tconforms-to\n";

TypeTable builtInTable() {
    auto table = TypeTable::parse(declaredTypesText);
    EXPECT_TRUE(table.has_value());
    return table ? *std::move(table) : TypeTable::withoutDeclarations();
}

TypeKind kindOf(const TypeTable& table, std::string_view identifier) {
    return table.conforms(identifier, "public.directory") ? TypeKind::directory : TypeKind::data;
}

TEST(TypeTable, readsTheFourCellsOfALine) {
    const auto text = header + "a.b\tx,y\tm/n\tpublic.data\nc.d\t\t\t";
    const auto table = TypeTable::parse(text);
    ASSERT_TRUE(table.has_value());
    ASSERT_EQ(table->declarations().size(), 2);
    const auto& first = table->declarations()[0];
    EXPECT_EQ(first.identifier, "a.b");
    EXPECT_THAT(splitList(first.extensions), ElementsAre("x", "y"));
    EXPECT_THAT(splitList(first.mimeTypes), ElementsAre("m/n"));
    EXPECT_THAT(splitList(first.parents), ElementsAre("public.data"));
    EXPECT_EQ(table->declarations()[1].identifier, "c.d");
    EXPECT_THAT(splitList(table->declarations()[1].parents), IsEmpty());
}

TEST(TypeTable, keepsViewsIntoTheTextItWasGiven) {
    const auto text = header + "a.b\tx\t\t\n";
    const auto table = TypeTable::parse(text);
    ASSERT_TRUE(table.has_value());
    EXPECT_EQ(table->typeForExtension("x", TypeKind::data)->data(), text.data() + header.size());
}

TEST(TypeTable, namesTheLineThatHasNotFourCells) {
    const auto tooFew = TypeTable::parse(header + "a.b\t\t\t\nc.d\t\t\n");
    ASSERT_FALSE(tooFew.has_value());
    EXPECT_EQ(tooFew.error().line, 3);
    EXPECT_EQ(tooFew.error().what, "4 cells expected, not 3");

    const auto tooMany = TypeTable::parse(header + "a.b\t\t\t\t\n");
    ASSERT_FALSE(tooMany.has_value());
    EXPECT_EQ(tooMany.error().line, 2);
    EXPECT_EQ(tooMany.error().what, "4 cells expected, not 5");

    const auto blankLine = TypeTable::parse(header + "\na.b\t\t\t\n");
    ASSERT_FALSE(blankLine.has_value());
    EXPECT_EQ(blankLine.error().line, 2);
    EXPECT_EQ(blankLine.error().what, "4 cells expected, not 1");
}

TEST(TypeTable, refusesALineWithoutIdentifier) {
    const auto table = TypeTable::parse(header + "\tx\t\t\n");
    ASSERT_FALSE(table.has_value());
    EXPECT_EQ(table.error().line, 2);
    EXPECT_EQ(table.error().what, "the identifier is empty");
}

TEST(TypeTable, refusesAnEmptyTextAndAnotherHeader) {
    const auto empty = TypeTable::parse("");
    ASSERT_FALSE(empty.has_value());
    EXPECT_EQ(empty.error().line, 1);
    EXPECT_EQ(empty.error().what, "the text is empty");

    const auto another = TypeTable::parse("identifier\tconforms-to\tmime-types\textensions\na.b\t\t\t\n");
    ASSERT_FALSE(another.has_value());
    EXPECT_EQ(another.error().line, 1);
    EXPECT_EQ(another.error().what, "not the expected header");
}

TEST(TypeTable, knowsNothingWithoutDeclarations) {
    const auto table = TypeTable::withoutDeclarations();
    EXPECT_TRUE(table.declarations().empty());
    EXPECT_EQ(table.declaredIdentifier("public.data"), std::nullopt);
    EXPECT_EQ(table.typeForExtension("png", TypeKind::data), std::nullopt);
    EXPECT_THAT(table.closure("public.data"), IsEmpty());
    EXPECT_FALSE(table.conforms("public.data", "public.data"));
}

TEST(TypeTable, findsIdentifiersInAnyCaseAndAnswersItsOwnSpelling) {
    const auto table = builtInTable();
    EXPECT_EQ(table.declaredIdentifier("COM.APPLE.IWORK.PAGES.PAGES"), "com.apple.iWork.Pages.pages");
    EXPECT_EQ(table.declaredIdentifier("com.apple.iWork.Keynote.SFFKey"), "com.apple.iwork.keynote.sffkey");
    EXPECT_EQ(table.declaredIdentifier("public.nothing-of-the-kind"), std::nullopt);
    EXPECT_EQ(table.declaredIdentifier(""), std::nullopt);
}

TEST(TypeTable, countsTheFirstOfTwoLinesWithOneIdentifier) {
    const auto text = header + "A.b\tx\t\t\na.B\ty\t\t\n";
    const auto table = TypeTable::parse(text);
    ASSERT_TRUE(table.has_value());
    EXPECT_EQ(table->declaredIdentifier("a.b"), "A.b");
}

TEST(TypeTable, findsExtensionsInAnyCase) {
    const auto table = builtInTable();
    EXPECT_EQ(table.typeForExtension("PnG", TypeKind::data), "public.png");
    EXPECT_EQ(table.typeForExtension("\u212A\u0045Y", TypeKind::data), "com.apple.iwork.keynote.sffkey");
    EXPECT_EQ(table.typeForExtension("C++", TypeKind::data), "public.c-plus-plus-source");
}

TEST(TypeTable, findsNoTypeForUnknownEmptyOrUnreadableExtensions) {
    const auto table = builtInTable();
    for (const auto kind : {TypeKind::data, TypeKind::directory}) {
        EXPECT_EQ(table.typeForExtension("nobody-declares-this", kind), std::nullopt);
        EXPECT_EQ(table.typeForExtension("", kind), std::nullopt);
        EXPECT_EQ(table.typeForExtension("png\xFF", kind), std::nullopt);
        EXPECT_EQ(table.typeForExtension("png,apng", kind), std::nullopt);
    }
}

TEST(TypeTable, tellsTheKindThroughParentsOfParents) {
    const auto text = header
                      + "a.bundle\tx\t\ta.middle\na.file\tx\t\tpublic.data\na.middle\t\t\tpublic.directory\n"
                      + "public.data\t\t\t\npublic.directory\td\t\t\n";
    const auto table = TypeTable::parse(text);
    ASSERT_TRUE(table.has_value());
    EXPECT_EQ(table->typeForExtension("x", TypeKind::directory), "a.bundle");
    EXPECT_EQ(table->typeForExtension("x", TypeKind::data), "a.file");
    EXPECT_EQ(table->typeForExtension("d", TypeKind::directory), "public.directory");
    EXPECT_EQ(table->typeForExtension("d", TypeKind::data), std::nullopt);
}

TEST(TypeTable, stopsWhereTypesConformToEachOther) {
    const auto text = header + "a.a\tx\t\ta.b\na.b\t\t\tA.C\na.c\t\t\ta.a,a.c,public.directory\n";
    const auto table = TypeTable::parse(text);
    ASSERT_TRUE(table.has_value());
    EXPECT_THAT(table->closure("A.A"), ElementsAre("a.a", "a.b", "a.c", "public.directory"));
    EXPECT_EQ(table->typeForExtension("x", TypeKind::directory), "a.a");
}

TEST(TypeTable, namesTheNearestTypesFirstAndEachOnce) {
    const auto text = header + "a.a\t\t\ta.b,a.c\na.b\t\t\ta.d\na.c\t\t\ta.d\na.d\t\t\ta.elsewhere\n";
    const auto table = TypeTable::parse(text);
    ASSERT_TRUE(table.has_value());
    EXPECT_THAT(table->closure("a.a"), ElementsAre("a.a", "a.b", "a.c", "a.d", "a.elsewhere"));
    EXPECT_TRUE(table->conforms("a.a", "A.Elsewhere"));
    EXPECT_FALSE(table->conforms("a.d", "a.a"));
    EXPECT_THAT(table->closure("a.elsewhere"), IsEmpty());
}

TEST(DeclaredTypesText, isTheFileUnchanged) {
    std::ifstream file(TOLVANE_SOURCE_DIR "/platform/linux/types/data/uti.tsv", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_FALSE(text.empty());
    EXPECT_EQ(declaredTypesText, text);
}

TEST(DeclaredTypesText, resolvesEachExtensionToItsLineWithinItsKind) {
    const auto table = builtInTable();
    EXPECT_EQ(table.declarations().size(), 617);
    std::size_t extensionCount = 0;
    for (const auto& declaration : table.declarations()) {
        const auto kind = kindOf(table, declaration.identifier);
        for (const auto extension : splitList(declaration.extensions)) {
            EXPECT_EQ(table.typeForExtension(extension, kind), declaration.identifier) << extension;
            ++extensionCount;
        }
    }
    EXPECT_EQ(extensionCount, 611);
}

TEST(DeclaredTypesText, holdsNoExtensionTwiceWithinAKindAndElevenInBoth) {
    const auto table = builtInTable();
    std::map<TypeKind, std::set<std::string_view>> extensions;
    for (const auto& declaration : table.declarations()) {
        const auto kind = kindOf(table, declaration.identifier);
        for (const auto extension : splitList(declaration.extensions)) {
            EXPECT_FALSE(extension.empty()) << declaration.identifier;
            EXPECT_TRUE(extensions[kind].insert(extension).second) << extension;
        }
    }
    std::vector<std::string_view> ofBothKinds;
    std::ranges::set_intersection(
        extensions[TypeKind::data], extensions[TypeKind::directory], std::back_inserter(ofBothKinds));
    EXPECT_THAT(
        ofBothKinds, UnorderedElementsAre(
                         "app", "pkg", "mpkg", "pages", "numbers", "key", "kth", "template", "nmbtemplate",
                         "pkpass", "fs"));
}

TEST(DeclaredTypesText, declaresEveryTypeOnceAndEveryParent) {
    const auto table = builtInTable();
    for (const auto& declaration : table.declarations()) {
        // A second line of the name would answer with the first one's identifier, at another address.
        EXPECT_EQ(table.declaredIdentifier(declaration.identifier)->data(), declaration.identifier.data());
        for (const auto parent : splitList(declaration.parents)) {
            EXPECT_EQ(table.declaredIdentifier(parent), parent) << declaration.identifier;
        }
    }
}

TEST(DeclaredTypesText, letsNoTypeConformToItselfThroughOthers) {
    const auto table = builtInTable();
    for (const auto& declaration : table.declarations()) {
        for (const auto parent : splitList(declaration.parents)) {
            EXPECT_FALSE(table.conforms(parent, declaration.identifier)) << declaration.identifier;
        }
    }
}

} // namespace
} // namespace tolvane::platform
