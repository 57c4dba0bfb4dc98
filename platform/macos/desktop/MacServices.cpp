#include "platform/macos/desktop/MacServices.h"

#include "platform/macos/appkit/AppKitCalls.h"
#include "platform/macos/values/Conversions.h"
#include "platform/values/FatalError.h"

namespace tolvane::platform {

namespace {

/// Nothing unless it is an array of texts and nothing else.
std::optional<std::vector<std::string>> textsOf(CFTypeRef object) {
    if (object == nullptr || CFGetTypeID(object) != CFArrayGetTypeID()) {
        return std::nullopt;
    }
    const auto array = static_cast<CFArrayRef>(object);
    std::vector<std::string> texts;
    for (CFIndex index = 0; index < CFArrayGetCount(array); ++index) {
        const CFTypeRef element = CFArrayGetValueAtIndex(array, index);
        if (CFGetTypeID(element) != CFStringGetTypeID()) {
            return std::nullopt;
        }
        texts.push_back(macos::textOf(static_cast<CFStringRef>(element)));
    }
    return texts;
}

} // namespace

MacServices::MacServices(Handler handler)
    : provider_(
          macos::createServicesProvider([handler = std::move(handler)](CFStringRef type, CFTypeRef names) {
              if (type == nullptr) {
                  fatalError("there is no pasteboard type for file names");
              }
              handler(std::make_shared<const MacServicesPasteboard>(textsOf(names)));
          })) {
    macos::setServicesProvider(provider_.get());
}

MacServices::~MacServices() {
    macos::setServicesProvider(nullptr);
}

} // namespace tolvane::platform
