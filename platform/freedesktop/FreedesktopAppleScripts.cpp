#include "platform/freedesktop/FreedesktopAppleScripts.h"

#include "platform/freedesktop/RevealScriptReader.h"

namespace tolvane::platform {

namespace {

class RevealScript final : public AppleScript {
public:
    RevealScript(std::shared_ptr<FileManagerReveal> fileManager, std::string path)
        : fileManager_(std::move(fileManager))
        , path_(std::move(path)) {}

    Result<void> executeAndReturnError() override {
        if (!fileManager_->reveal(path_)) {
            return std::unexpected(cocoaError(NSFileNoSuchFileError, "The file was not found."));
        }
        return {};
    }

private:
    std::shared_ptr<FileManagerReveal> fileManager_;
    std::string path_;
};

} // namespace

std::unique_ptr<AppleScript> FreedesktopAppleScripts::initWithSource(std::string_view source) {
    auto path = pathOfRevealScript(source);
    if (!path) {
        return nullptr;
    }
    return std::make_unique<RevealScript>(fileManager_, *std::move(path));
}

} // namespace tolvane::platform
