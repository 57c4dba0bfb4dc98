#include "platform/linux/types/TypeTable.h"

#include "platform/linux/types/DeclaredTypesText.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

const std::string header = "identifier\textensions\tmime-types\tconforms-to\n";

/// A table with the text that it has views into.
struct ParsedTable {
    explicit ParsedTable(const std::string& lines) : text(header + lines) {}

    const std::string text;
    const TypeTable table = TypeTable::parse(text).value();
};

void expectError(const std::string& text, std::size_t line, std::string_view what) {
    const auto table = TypeTable::parse(text);
    ASSERT_FALSE(table.has_value()) << text;
    EXPECT_EQ(table.error().line, line) << text;
    EXPECT_EQ(table.error().what, what) << text;
}

TypeTable builtInTable() {
    return TypeTable::parse(declaredTypesText).value();
}

TypeKind kindOf(const TypeTable& table, std::string_view identifier) {
    return table.conforms(identifier, "public.directory") ? TypeKind::directory : TypeKind::data;
}

TEST(TypeTable, readsTheFourCellsOfALine) {
    const ParsedTable parsed("a.b\tx,y\tm/n\tpublic.data\nc.d\t\t\t");
    ASSERT_EQ(parsed.table.declarations().size(), 2);
    const auto& first = parsed.table.declarations()[0];
    EXPECT_EQ(first.identifier, "a.b");
    EXPECT_THAT(splitList(first.extensions), ElementsAre("x", "y"));
    EXPECT_THAT(splitList(first.mimeTypes), ElementsAre("m/n"));
    EXPECT_THAT(splitList(first.parents), ElementsAre("public.data"));
    EXPECT_EQ(parsed.table.declarations()[1].identifier, "c.d");
    EXPECT_THAT(splitList(parsed.table.declarations()[1].parents), IsEmpty());
}

TEST(TypeTable, keepsViewsIntoTheTextItWasGiven) {
    const ParsedTable parsed("a.b\tx\t\t\n");
    EXPECT_EQ(parsed.table.typeForExtension("x", TypeKind::data)->data(), parsed.text.data() + header.size());
}

TEST(TypeTable, namesTheLineThatIsInvalid) {
    expectError("", 1, "the text is empty");
    expectError("identifier\tconforms-to\tmime-types\textensions\na.b\t\t\t\n", 1, "not the expected header");
    expectError(header + "a.b\t\t\t\nc.d\t\t\n", 3, "4 cells expected, not 3");
    expectError(header + "a.b\t\t\t\t\n", 2, "4 cells expected, not 5");
    expectError(header + "\na.b\t\t\t\n", 2, "4 cells expected, not 1");
    expectError(header + "\tx\t\t\n", 2, "the identifier is empty");
}

TEST(TypeTable, knowsNothingWithoutDeclarations) {
    const auto table = TypeTable::withoutDeclarations();
    EXPECT_TRUE(table.declarations().empty());
    EXPECT_EQ(table.declaredIdentifier("public.data"), std::nullopt);
    EXPECT_EQ(table.typeForExtension("png", TypeKind::data), std::nullopt);
    EXPECT_THAT(table.closure("public.data"), IsEmpty());
    EXPECT_FALSE(table.conforms("public.data", "public.data"));
}

TEST(TypeTable, findsIdentifiersInAnyCaseAndAnswersTheSpellingOfTheFirst) {
    const auto table = builtInTable();
    EXPECT_EQ(table.declaredIdentifier("COM.APPLE.IWORK.PAGES.PAGES"), "com.apple.iWork.Pages.pages");
    EXPECT_EQ(table.declaredIdentifier("com.apple.iWork.Keynote.SFFKey"), "com.apple.iwork.keynote.sffkey");
    EXPECT_EQ(table.declaredIdentifier("public.nothing-of-the-kind"), std::nullopt);
    EXPECT_EQ(table.declaredIdentifier(""), std::nullopt);
    const ParsedTable parsed("A.b\tx\t\t\na.B\ty\t\t\n");
    EXPECT_EQ(parsed.table.declaredIdentifier("a.b"), "A.b");
}

TEST(TypeTable, findsExtensionsInAnyCaseButNoneThatIsUnknownEmptyOrUnreadable) {
    const auto table = builtInTable();
    EXPECT_EQ(table.typeForExtension("PnG", TypeKind::data), "public.png");
    EXPECT_EQ(table.typeForExtension("\u212A\u0045Y", TypeKind::data), "com.apple.iwork.keynote.sffkey");
    EXPECT_EQ(table.typeForExtension("C++", TypeKind::data), "public.c-plus-plus-source");
    for (const auto kind : {TypeKind::data, TypeKind::directory}) {
        EXPECT_EQ(table.typeForExtension("not-declared", kind), std::nullopt);
        EXPECT_EQ(table.typeForExtension("", kind), std::nullopt);
        EXPECT_EQ(table.typeForExtension("png\xFF", kind), std::nullopt);
        EXPECT_EQ(table.typeForExtension("png,apng", kind), std::nullopt);
    }
}

TEST(TypeTable, reportsTheKindThroughParentsOfParents) {
    const ParsedTable parsed(
        "a.bundle\tx\t\ta.middle\na.file\tx\t\tpublic.data\na.middle\t\t\tpublic.directory\n"
        "public.data\t\t\t\npublic.directory\td\t\t\n");
    EXPECT_EQ(parsed.table.typeForExtension("x", TypeKind::directory), "a.bundle");
    EXPECT_EQ(parsed.table.typeForExtension("x", TypeKind::data), "a.file");
    EXPECT_EQ(parsed.table.typeForExtension("d", TypeKind::directory), "public.directory");
    EXPECT_EQ(parsed.table.typeForExtension("d", TypeKind::data), std::nullopt);
}

TEST(TypeTable, stopsWhereTypesConformToEachOther) {
    const ParsedTable parsed("a.a\tx\t\ta.b\na.b\t\t\tA.C\na.c\t\t\ta.a,a.c,public.directory\n");
    EXPECT_THAT(parsed.table.closure("A.A"), ElementsAre("a.a", "a.b", "a.c", "public.directory"));
    EXPECT_EQ(parsed.table.typeForExtension("x", TypeKind::directory), "a.a");
}

TEST(TypeTable, namesTheNearestTypesFirstAndEachOnce) {
    const ParsedTable parsed("a.a\t\t\ta.b,a.c\na.b\t\t\ta.d\na.c\t\t\ta.d\na.d\t\t\ta.elsewhere\n");
    EXPECT_THAT(parsed.table.closure("a.a"), ElementsAre("a.a", "a.b", "a.c", "a.d", "a.elsewhere"));
    EXPECT_TRUE(parsed.table.conforms("a.a", "A.Elsewhere"));
    EXPECT_FALSE(parsed.table.conforms("a.d", "a.a"));
    EXPECT_THAT(parsed.table.closure("a.elsewhere"), IsEmpty());
}

TEST(DeclaredTypesText, isTheFileUnchanged) {
    EXPECT_FALSE(declaredTypesText.empty());
    EXPECT_EQ(
        declaredTypesText, tests::contentsOfFile(TOLVANE_SOURCE_DIR "/platform/linux/types/data/uti.tsv"));
}

TEST(DeclaredTypesText, resolvesEachExtensionToItsOnlyLineWithinItsKindAndHasElevenInBoth) {
    const auto table = builtInTable();
    EXPECT_EQ(table.declarations().size(), 617);
    std::map<TypeKind, std::set<std::string_view>> extensions;
    for (const auto& declaration : table.declarations()) {
        const auto kind = kindOf(table, declaration.identifier);
        for (const auto extension : splitList(declaration.extensions)) {
            EXPECT_FALSE(extension.empty()) << declaration.identifier;
            EXPECT_TRUE(extensions[kind].insert(extension).second) << extension;
            EXPECT_EQ(table.typeForExtension(extension, kind), declaration.identifier) << extension;
        }
    }
    EXPECT_EQ(extensions[TypeKind::data].size() + extensions[TypeKind::directory].size(), 611);
    std::vector<std::string_view> ofBothKinds;
    std::ranges::set_intersection(
        extensions[TypeKind::data], extensions[TypeKind::directory], std::back_inserter(ofBothKinds));
    EXPECT_THAT(
        ofBothKinds, UnorderedElementsAre(
                         "app", "pkg", "mpkg", "pages", "numbers", "key", "kth", "template", "nmbtemplate",
                         "pkpass", "fs"));
}

TEST(DeclaredTypesText, declaresEveryTypeOnceAndEveryParentWithoutCircles) {
    const auto table = builtInTable();
    for (const auto& declaration : table.declarations()) {
        // A second line of the name would answer with the first one's identifier, at another address.
        EXPECT_EQ(table.declaredIdentifier(declaration.identifier)->data(), declaration.identifier.data());
        for (const auto parent : splitList(declaration.parents)) {
            EXPECT_EQ(table.declaredIdentifier(parent), parent) << declaration.identifier;
            EXPECT_FALSE(table.conforms(parent, declaration.identifier)) << declaration.identifier;
        }
    }
}

} // namespace
} // namespace tolvane::platform
