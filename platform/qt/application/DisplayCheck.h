#pragma once

namespace tolvane::platform {

/// Turns Qt's failure to reach a display, which would abort the program, into one sentence on standard error,
/// which names the terminal program, and an exit status of 1. Kept while Qt's application object is made;
/// afterwards Qt's messages are as they were.
class DisplayCheck {
public:
    DisplayCheck();
    DisplayCheck(const DisplayCheck&) = delete;
    DisplayCheck& operator=(const DisplayCheck&) = delete;
    ~DisplayCheck();
};

} // namespace tolvane::platform
