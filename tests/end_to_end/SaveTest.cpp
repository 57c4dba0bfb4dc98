#include "details/ViewController.h"
#include "inspect/Document.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/model/WindowController.h"
#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/MemoryDocumentController.h"
#include "tests/support/MemoryPasteboard.h"
#include "tests/support/MemorySavePanel.h"
#include "tests/support/MemoryStoryboard.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tolvane::tests {
namespace {

using platform::URL;

constexpr const char* timeZone = "Europe/Berlin";

std::optional<std::string> germanEnvironment(const std::string& name) {
    const std::map<std::string, std::string> variables{{"LC_ALL", "de_DE.UTF-8"}, {"HOME", "/home/demo"}};
    const auto variable = variables.find(name);
    return variable == variables.end() ? std::nullopt : std::optional(variable->second);
}

// The windowed program without its windows: the facts, the clock and the saving are Linux's.
class Application {
public:
    Application() {
        bundle_.storyboard("Main").addWindowScene(
            "Document Window Controller", [this](const platform::Coder& coder) {
                return details::ViewController::initWithCoder(
                    coder, {system_.resources, system_.bookmarks, system_.session, system_.textFiles,
                            savePanels_, pasteboard_, defaults_});
            });
    }

    std::shared_ptr<details::ViewController> open(const std::string& path) {
        const auto document = documents_.openDocumentWithContentsOfURL(URL::fileURLWithPath(path));
        if (!document) {
            return nullptr;
        }
        document_ = *document;
        return std::dynamic_pointer_cast<details::ViewController>(
            document_->windowControllers().front()->contentViewController());
    }

    platform::MemorySavePanels& savePanels() { return savePanels_; }
    const platform::LinuxUserSession& session() const { return system_.session; }

private:
    platform::LinuxPlatform system_{
        platform::declaredTypes([](const std::string& sentence) { ADD_FAILURE() << sentence; }),
        platform::LinuxUserSession(germanEnvironment, timeZone)};
    platform::MemorySavePanels savePanels_;
    platform::MemoryPasteboard pasteboard_;
    platform::MemoryUserDefaults defaults_;
    platform::MemoryBundle bundle_;
    platform::MemoryDocumentController documents_{
        system_.resources, [this] {
            return std::make_shared<inspect::Document>(
                inspect::FileSources{system_.resources, system_.fileManager, system_.extendedAttributes},
                bundle_);
        }};
    std::shared_ptr<platform::Document> document_;
};

// The text up to the date row, and that row.
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
    Application application;
    for (const auto& path : paths) {
        SCOPED_TRACE(path);
        const auto window = application.open(path);
        ASSERT_TRUE(window);
        window->saveCommand(nullptr);
        const auto panel = application.savePanels().newest();
        ASSERT_TRUE(panel && panel->isWaiting());
        const auto destination = saved.path("saved.text");
        panel->answer(platform::modalResponseOK, URL::fileURLWithPath(destination));
        const auto [text, date] = cutAtDate(contentsOfFile(destination));
        EXPECT_EQ(date, application.session().describeForLocale(*window->theDate()));
        EXPECT_TRUE(text.contains("\nFileReferenceURL: file:///.file/id="));

        auto setup = tolvane({"report", "--", path});
        setup.environment = {"LC_ALL=de_DE.UTF-8", std::string("TZ=") + timeZone};
        const auto printed = run(setup);
        EXPECT_EQ(printed.status, 0) << printed.err;
        const auto [printedText, printedDate] = cutAtDate(printed.out);
        EXPECT_EQ(text, printedText);
        // The clock may have gone on between the two, the words around its hands have not.
        EXPECT_TRUE(
            printedDate.ends_with("Mitteleurop\u00e4ische Normalzeit\n")
            || printedDate.ends_with("Mitteleurop\u00e4ische Sommerzeit\n"))
            << printedDate;
    }
}

} // namespace
} // namespace tolvane::tests
