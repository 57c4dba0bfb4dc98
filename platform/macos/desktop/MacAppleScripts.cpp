#include "platform/macos/desktop/MacAppleScripts.h"

#include "platform/macos/appkit/AppKitCalls.h"
#include "platform/macos/values/Owned.h"

#include <string>
#include <utility>

namespace tolvane::platform {

using macos::Owned;

namespace {

class MacAppleScript final : public AppleScript {
public:
    explicit MacAppleScript(Owned<CFTypeRef> script) : script_(std::move(script)) {}

    Result<void> executeAndReturnError() override {
        if (!macos::executeScript(script_.get())) {
            return std::unexpected(cocoaError(NSFileReadUnknownError, "The script failed."));
        }
        return {};
    }

private:
    Owned<CFTypeRef> script_;
};

} // namespace

std::unique_ptr<AppleScript> MacAppleScripts::initWithSource(std::string_view source) {
    const Owned<CFStringRef> text(
        CFStringCreateWithCString(nullptr, std::string(source).c_str(), kCFStringEncodingUTF8));
    if (!text) {
        return nullptr;
    }
    Owned<CFTypeRef> script(macos::createScript(text.get()));
    return script ? std::make_unique<MacAppleScript>(std::move(script)) : nullptr;
}

} // namespace tolvane::platform
