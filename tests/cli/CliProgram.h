#pragma once

#include "cli/Program.h"
#include "platform/bookmark/StoredProperties.h"
#include "platform/memory/MemoryDocumentController.h"
#include "tests/support/DetailsWindow.h"
#include "tests/support/ResolverWindow.h"
#include "tests/support/Streams.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tolvane::tests {

/// The terminal program over scripted backends. Names that hold "missing" lead nowhere. Bookmarks are read by
/// the real reader; what files hold and what is resolved is scripted.
class CliProgram : public testing::Test {
protected:
    CliProgram() {
        bundle.storyboard("Main").addWindowScene(
            "Bookmark Resolver Window", [this](const platform::Coder& coder) {
                return resolver::TRViewController::initWithCoder(coder, resolverSources);
            });
    }

    class Resources final : public platform::URLResources {
    public:
        explicit Resources(const ScriptedURLResources& real) : real_(real) {}
        platform::Result<platform::Dictionary> resourceValuesForKeys(
            const platform::URL& url, std::span<const std::string_view> keys) const override {
            if (url.path().contains("missing")) {
                return std::unexpected(platform::posixError(ENOENT));
            }
            return real_.resourceValuesForKeys(url, keys);
        }

    private:
        const ScriptedURLResources& real_;
    };

    cli::ExitStatus run(const std::vector<std::string>& arguments, std::string input = {}) {
        TextInput standardInput(std::move(input));
        standardInput.failureAtEnd = inputFailure;
        return cli::runProgram(
            arguments,
            {documents, standardInput, output, errors,
             [this]() -> platform::Result<std::string> { return folder; },
             [this](const std::string& path) -> platform::Result<std::unique_ptr<platform::InputStream>> {
                 const auto file = files.find(path);
                 if (file == files.end()) {
                     return std::unexpected(platform::posixError(ENOENT));
                 }
                 return std::make_unique<TextInput>(file->second);
             },
             bookmarks, session, *bundle.storyboardWithName("Main"), witness});
    }

    DetailsWindow details;
    Resources resources{details.resources};
    platform::MemoryDocumentController documents{
        resources,
        [this] { return std::make_shared<inspect::Document>(details.fileSources(), details.bundle); }};
    TextOutput output;
    TextOutput errors;
    std::optional<platform::Error> inputFailure;
    platform::Result<std::string> folder = std::string("/here");
    std::map<std::string, std::string> files;

    CallLog log;
    ScriptedBookmarks bookmarks{log};
    ScriptedFileManager fileManager{log};
    ScriptedSession session;
    cli::ResolutionWitness witness{bookmarks, fileManager};
    platform::StoredProperties properties;
    ScriptedOpenPanels openPanels{log};
    ScriptedAppleScripts appleScripts{log};
    ScriptedPreviewPanels previewPanels{log};
    platform::MemoryUserDefaults defaults;
    resolver::ResolverSources resolverSources{witness,      properties,    witness, openPanels,
                                              appleScripts, previewPanels, defaults};
    platform::MemoryBundle bundle;
};

} // namespace tolvane::tests
