#pragma once

#include <QApplication>

#include <array>
#include <memory>
#include <string>

namespace tolvane::tests {

/// The one QApplication of this test program, which draws in memory only. It is never destroyed, since Qt's
/// own objects may be gone by the time a program ends.
inline QApplication& application() {
    static const bool offscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    static std::string name = "tolvane-test";
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static int count = offscreen ? 1 : 0;
    static QApplication& theApplication = *std::make_unique<QApplication>(count, arguments.data()).release();
    return theApplication;
}

} // namespace tolvane::tests
