#include "tests/architecture/IncludeRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::architecture {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Whether a source at `file` with the one line `line` breaks a rule.
bool refuses(std::string_view file, std::string_view line) {
    return !violationsIn(file, line).empty();
}

bool allows(std::string_view file, std::string_view line) {
    return !refuses(file, line);
}

bool isSource(const std::filesystem::path& path) {
    constexpr std::array<std::string_view, 10> endings{".c",  ".cc",  ".cpp", ".cxx", ".h",
                                                       ".hh", ".hpp", ".hxx", ".inl", ".ipp"};
    return std::ranges::find(endings, path.extension().string()) != endings.end();
}

// Builds and data are no sources, whatever their names.
bool isLeftOut(const std::string& folder) {
    return folder.starts_with('.') || folder == "build" || folder == "tests/data";
}

std::vector<std::string> sourcesOfTheRepository() {
    const std::filesystem::path root = TOLVANE_SOURCE_DIR;
    std::vector<std::string> sources;
    for (auto entry = std::filesystem::recursive_directory_iterator(root);
         entry != std::filesystem::recursive_directory_iterator(); ++entry) {
        const std::string path = entry->path().lexically_relative(root).generic_string();
        if (entry->is_directory() && isLeftOut(path)) {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file() && isSource(entry->path())) {
            sources.push_back(path);
        }
    }
    std::ranges::sort(sources);
    return sources;
}

std::string textOf(const std::string& source) {
    std::ifstream stream(std::filesystem::path(TOLVANE_SOURCE_DIR) / source, std::ios::binary);
    EXPECT_TRUE(stream) << source;
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Layering, holdsInEverySourceOfTheRepository) {
    const std::vector<std::string> sources = sourcesOfTheRepository();
    ASSERT_THAT(sources, Contains("tests/architecture/LayeringTest.cpp"));
    ASSERT_THAT(sources, Contains("cli/main.cpp"));
    for (const std::string& source : sources) {
        for (const Violation& violation : violationsIn(source, textOf(source))) {
            ADD_FAILURE() << violation;
        }
    }
}

TEST(Layering, namesFileLineAndInclude) {
    const auto violations = violationsIn("inspect/Report.cpp", "#include <vector>\n\n#include <fcntl.h>\n");
    ASSERT_THAT(violations, SizeIs(1));
    EXPECT_EQ(violations[0].file, "inspect/Report.cpp");
    EXPECT_EQ(violations[0].line, 3U);
    EXPECT_EQ(violations[0].text, "#include <fcntl.h>");
    EXPECT_THAT(
        testing::PrintToString(violations[0]),
        testing::StartsWith("inspect/Report.cpp:3: #include <fcntl.h>: "));
}

TEST(Layering, reportsEveryViolationInTheOrderOfLines) {
    const auto violations =
        violationsIn("details/A.cpp", "#include \"cli/B.h\"\n#ifdef _WIN32\n#endif\n#include <QString>\n");
    std::vector<std::size_t> lines;
    std::ranges::transform(violations, std::back_inserter(lines), &Violation::line);
    EXPECT_THAT(lines, ElementsAre(1, 2, 4));
}

TEST(Layering, refusesAFolderThatNoRuleKnows) {
    EXPECT_TRUE(refuses("network/Socket.cpp", ""));
    EXPECT_TRUE(refuses("platform/windows/Files.cpp", ""));
    EXPECT_TRUE(refuses("details/tables/Table.h", ""));
    EXPECT_TRUE(refuses("Stray.cpp", ""));
}

TEST(Layering, allowsTheOwnFolder) {
    for (const std::string folder :
         {"app", "inspect", "details", "resolver", "platform", "platform/bookmark", "platform/linux",
          "platform/memory", "platform/qt", "platform/qt/network", "platform/qt/panels",
          "platform/qt/preview", "platform/qt/text", "platform/freedesktop", "decoder", "cli", "fuzz",
          "tests/cli", "bench"}) {
        EXPECT_TRUE(allows(folder + "/A.cpp", "#include \"" + folder + "/A.h\"")) << folder;
    }
}

TEST(Layering, grantsEachFolderTheLayersBeneathItAndNoOther) {
    struct Row {
        std::string folder;
        std::vector<std::string> granted;
    };
    const std::vector<std::string> all{
        "app",
        "bench",
        "cli",
        "decoder",
        "details",
        "fuzz",
        "inspect",
        "platform",
        "platform/bookmark",
        "platform/freedesktop",
        "platform/linux",
        "platform/memory",
        "platform/qt",
        "platform/qt/network",
        "platform/qt/panels",
        "platform/qt/preview",
        "platform/qt/text",
        "resolver",
        "tests/support"};
    const std::vector<Row> rows{
        {"app", {"platform", "inspect"}},
        {"inspect", {"platform"}},
        {"details", {"platform", "inspect"}},
        {"resolver", {"platform"}},
        {"platform", {}},
        {"platform/bookmark", {"platform"}},
        {"platform/linux", {"platform", "platform/bookmark"}},
        {"platform/memory", {"platform"}},
        {"platform/qt", {"platform", "platform/qt/text"}},
        {"platform/qt/network", {"platform", "platform/qt"}},
        {"platform/qt/panels", {"platform", "platform/qt", "platform/qt/text"}},
        {"platform/qt/preview", {"platform", "platform/qt", "platform/qt/text"}},
        {"platform/qt/text", {"platform"}},
        {"decoder", {"platform/qt/preview"}},
        {"platform/freedesktop", {"platform"}},
        {"cli", {"inspect", "details", "resolver", "platform", "platform/bookmark"}},
        {"fuzz", all},
        {"tests/inspect", all},
        {"bench", all},
    };
    for (const auto& [folder, granted] : rows) {
        for (const std::string& other : all) {
            const bool expected = other == folder || std::ranges::find(granted, other) != granted.end();
            EXPECT_EQ(allows(folder + "/A.h", "#include \"" + other + "/B.h\""), expected)
                << folder << "/ including from " << other << "/";
        }
    }
}

TEST(Layering, grantsAFolderWithoutTheFoldersBeneathIt) {
    EXPECT_TRUE(allows("inspect/A.cpp", "#include \"platform/B.h\""));
    EXPECT_TRUE(refuses("inspect/A.cpp", "#include \"platform/new/B.h\""));
    EXPECT_TRUE(refuses("platform/A.cpp", "#include \"platform/linux/B.h\""));
}

TEST(Layering, letsThePartsMeetInMainAlone) {
    EXPECT_TRUE(allows("cli/main.cpp", "#include \"platform/linux/A.h\""));
    EXPECT_TRUE(allows("cli/main.cpp", "#include \"platform/memory/A.h\""));
    EXPECT_TRUE(allows("app/main.cpp", "#include \"platform/qt/A.h\""));
    EXPECT_TRUE(allows("app/main.cpp", "#include <QApplication>"));
    EXPECT_TRUE(refuses("cli/Main.cpp", "#include \"platform/linux/A.h\""));
    EXPECT_TRUE(refuses("inspect/main.cpp", "#include \"platform/linux/A.h\""));
}

TEST(Layering, keepsQtOutOfTheTerminalProgramsMain) {
    EXPECT_TRUE(refuses("cli/main.cpp", "#include \"platform/qt/A.h\""));
    EXPECT_TRUE(refuses("cli/main.cpp", "#include \"platform/freedesktop/A.h\""));
    EXPECT_TRUE(refuses("cli/main.cpp", "#include <QString>"));
}

TEST(Layering, refusesASystemHeaderOutsideTheBackends) {
    for (const std::string header : {"unistd.h", "sys/stat.h", "linux/fs.h", "mntent.h", "string.h"}) {
        const std::string line = "#include <" + header + ">";
        EXPECT_TRUE(allows("platform/linux/A.cpp", line)) << header;
        for (const std::string folder :
             {"app", "inspect", "details", "resolver", "platform", "platform/bookmark", "platform/memory",
              "platform/qt", "platform/freedesktop", "cli"}) {
            EXPECT_TRUE(refuses(folder + "/A.cpp", line)) << folder << ' ' << header;
        }
    }
}

TEST(Layering, grantsThirdPartiesToTheirFoldersAlone) {
    struct Row {
        std::string header;
        std::vector<std::string> folders;
    };
    const std::vector<std::string> qt{
        "platform/qt",
        "platform/qt/network",
        "platform/qt/panels",
        "platform/qt/preview",
        "platform/qt/text",
        "platform/freedesktop",
        "decoder"};
    const std::vector<Row> rows{
        {"unicode/unistr.h", {"platform/linux"}},
        {"QString", qt},
        {"QtCore/QString", qt},
        {"poppler-qt6.h", {"decoder"}},
        {"fontconfig/fontconfig.h", {"platform/freedesktop"}},
        {"plist/plist.h", {"platform/qt/network"}},
        {"CLI/CLI.hpp", {"cli"}},
        {"nlohmann/json.hpp", {"cli"}},
        {"gtest/gtest.h", {}},
        {"boost/any.hpp", {}},
        {"zlib.h", {}},
        {"platform/URL.h", {}},
    };
    for (const auto& [header, folders] : rows) {
        for (const std::string folder :
             {"app", "inspect", "details", "resolver", "platform", "platform/bookmark", "platform/linux",
              "platform/memory", "platform/qt", "platform/qt/network", "platform/qt/panels",
              "platform/qt/preview", "platform/qt/text", "platform/freedesktop", "decoder", "cli"}) {
            const bool expected = std::ranges::find(folders, folder) != folders.end();
            EXPECT_EQ(allows(folder + "/A.h", "#include <" + header + ">"), expected)
                << folder << ' ' << header;
        }
        EXPECT_TRUE(allows("tests/cli/ATest.cpp", "#include <" + header + ">")) << header;
        EXPECT_TRUE(allows("bench/A.cpp", "#include <" + header + ">")) << header;
    }
}

TEST(Layering, allowsTheStandardLibraryEverywhere) {
    for (const std::string header : {"expected", "algorithm", "version", "cstdint", "string_view"}) {
        EXPECT_TRUE(allows("platform/A.h", "#include <" + header + ">")) << header;
        EXPECT_TRUE(allows("details/A.h", "#include <" + header + ">")) << header;
    }
    EXPECT_TRUE(refuses("platform/A.h", "#include <expectation>"));
}

TEST(Layering, refusesAHeaderNotNamedFromTheRoot) {
    EXPECT_TRUE(refuses("platform/A.cpp", "#include \"A.h\""));
    EXPECT_TRUE(refuses("inspect/A.cpp", "#include \"../platform/A.h\""));
    EXPECT_TRUE(refuses("inspect/A.cpp", "#include \"platform/../cli/A.h\""));
    EXPECT_TRUE(refuses("inspect/A.cpp", "#include HEADER"));
    EXPECT_TRUE(refuses("inspect/A.cpp", "#include"));
}

TEST(Layering, findsAnIncludeHoweverItIsSpelled) {
    EXPECT_TRUE(refuses("inspect/A.cpp", "  #  include   <unistd.h> // why"));
    EXPECT_TRUE(refuses("inspect/A.cpp", "#include<unistd.h>"));
    EXPECT_TRUE(refuses("inspect/A.cpp", "/* why */ #include <unistd.h>"));
    EXPECT_TRUE(refuses("inspect/A.cpp", "#include \\\n<unistd.h>"));
    EXPECT_TRUE(refuses("inspect/A.cpp", "#include <unistd.h>\r\n"));
    EXPECT_TRUE(
        refuses("inspect/A.cpp", "auto a = \"//\"; auto b = '\"'; auto c = 1'0;\n#include <unistd.h>"));
    EXPECT_TRUE(refuses("inspect/A.cpp", "auto a = R\"x(\" )\" )x\";\n#include <unistd.h>"));
}

TEST(Layering, passesOverWhatOnlyLooksLikeAnInclude) {
    EXPECT_THAT(violationsIn("inspect/A.cpp", "// #include <unistd.h>"), IsEmpty());
    EXPECT_THAT(violationsIn("inspect/A.cpp", "// why \\\n#include <unistd.h>"), IsEmpty());
    EXPECT_THAT(violationsIn("inspect/A.cpp", "/*\n#include <unistd.h>\n*/"), IsEmpty());
    EXPECT_THAT(violationsIn("inspect/A.cpp", "auto a = R\"(\n#include <unistd.h>\n)\";"), IsEmpty());
}

TEST(Layering, refusesToTellPlatformsApartOutsideThePlatformFolder) {
    for (const std::string condition :
         {"#ifdef __linux__", "#ifndef __APPLE__", "#if defined(_WIN32)", "#if 0\n#elif defined __linux__",
          "#if defined(A) || \\\n    defined(__APPLE__)", "#if 0\n#elifdef _WIN32", "# if Q_OS_LINUX"}) {
        const std::string text = condition + "\n#endif\n";
        for (const std::string file :
             {"app/main.cpp", "cli/main.cpp", "inspect/A.h", "tests/cli/ATest.cpp"}) {
            EXPECT_TRUE(refuses(file, text)) << file << ": " << text;
        }
        EXPECT_TRUE(allows("platform/A.h", text)) << text;
        EXPECT_TRUE(allows("platform/linux/A.cpp", text)) << text;
    }
}

TEST(Layering, allowsConditionsThatAskForNoPlatform) {
    EXPECT_TRUE(allows("inspect/A.h", "#ifndef NDEBUG\n#endif\n#if __cplusplus > 202100L\n#endif\n"));
}

} // namespace
} // namespace tolvane::architecture
