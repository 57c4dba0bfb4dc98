#include "platform/freedesktop/FontConfiguration.h"

#include <fontconfig/fontconfig.h>

namespace tolvane::platform {

FontConfiguration::FontConfiguration() : reader_([this] { read_ = FcInit() == FcTrue; }) {}

FontConfiguration::~FontConfiguration() {
    if (reader_.joinable()) {
        reader_.join();
    }
}

bool FontConfiguration::isRead() {
    if (reader_.joinable()) {
        reader_.join();
    }
    return read_;
}

} // namespace tolvane::platform
