// The programs that tests run as a user does.
#pragma once

#include <string>

namespace tolvane::tests {

/// The path of a program in TOLVANE_PROGRAMS_DIR: the release build's folder, unless the build was set up
/// otherwise.
std::string programPath(const std::string& name);

} // namespace tolvane::tests
