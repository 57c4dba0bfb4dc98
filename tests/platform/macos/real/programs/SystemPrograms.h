#pragma once

#include "platform/values/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What the system's own programs say of a file, to compare the services with. Nothing here is about macOS
/// alone, so that it is tested where the system's programs are not.
namespace tolvane::tests::macos {

struct ProgramAnswer {
    int status = -1; ///< The exit status; -1 when the program did not start or a signal ended it.
    std::string out; ///< Its standard output. The other one goes where the test's does.
};

/// Runs a program of the search path to its end, without input.
ProgramAnswer answerOf(const std::vector<std::string>& command);

/// The words of a text between blanks and line feeds.
std::vector<std::string> wordsOf(const std::string& text);

/// The seconds since 1970 of "08/09/2024 18:27:02", which is in the time zone of the process; nothing if the
/// text is of another form.
std::optional<std::int64_t> secondsOfLocalTime(const std::string& text);

/// The bytes that "54 45 0A" stands for, on any number of lines; nothing if there is anything else.
std::optional<platform::Data> bytesOfHex(const std::string& text);

} // namespace tolvane::tests::macos
