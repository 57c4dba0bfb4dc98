#pragma once

#include "cli/Program.h"
#include "tests/cli/Words.h"
#include "tests/support/DetailsWindow.h"
#include "tests/support/MemoryFileContents.h"
#include "tests/support/ScriptedSources.h"
#include "tests/support/Streams.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <memory>
#include <string>

namespace tolvane::tests {

/// The terminal program over scripted services, except that bookmarks are really parsed. Files whose names
/// contain "missing" do not exist.
class CliProgram : public testing::Test, public DetailsWindow {
protected:
    CliProgram() { resources.missing = "missing"; }

    class Extracted final : public platform::NewFiles {
    public:
        Extracted(std::string folder, std::map<std::string, platform::Data>& files)
            : folder_(std::move(folder))
            , files_(files) {}
        platform::Result<void> write(const std::string& name, std::span<const std::byte> bytes) override {
            const bool isNew =
                files_.emplace(folder_ + "/" + name, platform::Data(bytes.begin(), bytes.end())).second;
            return isNew ? platform::Result<void>() : std::unexpected(platform::posixError(EEXIST));
        }

    private:
        std::string folder_;
        std::map<std::string, platform::Data>& files_;
    };

    /// Runs the program; `output` and `errors` then have the texts of this run.
    cli::ExitStatus run(const Words& arguments, std::string input = {}) {
        output.text.clear();
        errors.text.clear();
        TextInput standardInput(std::move(input));
        return cli::runProgram(
            arguments,
            {fileSources(),
             standardInput,
             output,
             errors,
             [this]() -> platform::Result<std::string> { return folder; },
             [this](const std::string& path) -> platform::Result<std::unique_ptr<platform::InputStream>> {
                 const auto file = files.find(path);
                 if (file == files.end()) {
                     return std::unexpected(platform::posixError(ENOENT));
                 }
                 return std::make_unique<TextInput>(file->second);
             },
             bookmarks,
             session,
             contents,
             1,
             {},
             facts,
             linkAttributes,
             [this](const std::string& path) -> platform::Result<std::unique_ptr<platform::NewFiles>> {
                 if (path.contains("missing")) {
                     return std::unexpected(platform::posixError(ENOENT));
                 }
                 return std::make_unique<Extracted>(path, extracted);
             }});
    }

    /// The output of a run that succeeds without a complaint.
    std::string printed(const Words& arguments, const std::string& input = {}) {
        EXPECT_EQ(run(arguments, input), cli::ExitStatus::success);
        EXPECT_EQ(errors.text, "");
        return output.text;
    }

    /// The complaint of a run that fails without output.
    std::string complaint(const Words& arguments, const std::string& input = {}) {
        EXPECT_EQ(run(arguments, input), cli::ExitStatus::failure);
        EXPECT_EQ(output.text, "");
        return errors.text;
    }

    std::map<std::string, platform::Data> extracted; ///< By path; what is here is not written again.
    TextOutput output;
    TextOutput errors;
    platform::Result<std::string> folder = std::string("/here");
    const platform::StatusFactSource* facts = nullptr;
    const platform::ExtendedAttributeCalls* linkAttributes = nullptr;
    std::map<std::string, std::string> files;
    MemoryFileContents contents{files};
};

} // namespace tolvane::tests
