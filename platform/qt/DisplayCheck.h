#pragma once

namespace tolvane::platform {

/// Makes the toolkit's failure to reach a display, which would abort the program, one sentence on standard
/// error, which names the terminal program, and an exit status of 1. To be kept while the toolkit's
/// application object is made; afterwards its messages are as they were.
class DisplayCheck {
public:
    DisplayCheck();
    DisplayCheck(const DisplayCheck&) = delete;
    DisplayCheck& operator=(const DisplayCheck&) = delete;
    ~DisplayCheck();
};

} // namespace tolvane::platform
