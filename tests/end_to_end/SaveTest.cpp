#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/LinuxDetailsWindow.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace tolvane::tests {
namespace {

constexpr const char* timeZone = "Europe/Berlin";

std::optional<std::string> germanEnvironment(const std::string& name) {
    const std::map<std::string, std::string> variables{{"LC_ALL", "de_DE.UTF-8"}, {"HOME", "/home/demo"}};
    const auto variable = variables.find(name);
    return variable == variables.end() ? std::nullopt : std::optional(variable->second);
}

/// The text before the date row, and that row.
std::pair<std::string, std::string> cutAtDate(const std::string& report) {
    const auto date = report.rfind("\non ");
    return date == std::string::npos ? std::pair(report, std::string())
                                     : std::pair(report.substr(0, date), report.substr(date + 4));
}

TEST(Saving, writesWhatTheTerminalProgramPrints) {
    const TemporaryFolder folder;
    const TemporaryFolder saved;
    auto paths = addKinds(folder);
    for (const auto& more : {addOddNames(folder), addAttributes(folder, 1'100)}) {
        paths.insert(paths.end(), more.begin(), more.end());
    }
    const auto types =
        platform::declaredTypes([](const std::string& sentence) { ADD_FAILURE() << sentence; });
    for (const auto& path : paths) {
        SCOPED_TRACE(path);
        LinuxDetailsWindow window(path, types, platform::LinuxUserSession(germanEnvironment, timeZone));
        window.save(saved.path("saved.text"));
        const auto [text, date] = cutAtDate(contentsOfFile(saved.path("saved.text")));
        EXPECT_EQ(date, window.dateText());
        EXPECT_TRUE(text.contains("\nFileReferenceURL: file:///.file/id="));

        const auto outcome = run(tolvane(
            {"report", "--", path}, {.environment = {"LC_ALL=de_DE.UTF-8", std::string("TZ=") + timeZone}}));
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const auto [printedText, printedDate] = cutAtDate(outcome.out);
        EXPECT_EQ(text, printedText);
        // The time may differ, the words around it do not.
        EXPECT_TRUE(
            printedDate.ends_with("Mitteleurop\u00e4ische Normalzeit\n")
            || printedDate.ends_with("Mitteleurop\u00e4ische Sommerzeit\n"))
            << printedDate;
    }
}

} // namespace
} // namespace tolvane::tests
