#pragma once

#include <thread>

namespace tolvane::platform {

/// Has the desktop's font configuration read beside whatever else a start has to do. The first text that is
/// laid out needs it, and reading it takes as long as building a small window.
///
/// Reading it early changes nothing but when it is read. The object waits at its end for the reading to end.
class FontConfiguration {
public:
    FontConfiguration();
    FontConfiguration(const FontConfiguration&) = delete;
    FontConfiguration& operator=(const FontConfiguration&) = delete;
    ~FontConfiguration();

    /// True when whoever lays out text will find the configuration read. Waits for the reading.
    bool isRead();

private:
    bool read_ = false;
    std::thread reader_;
};

} // namespace tolvane::platform
