// What the programs print about themselves, to compare other files with.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace tolvane::tests {

using Texts = std::set<std::string>;

/// What the command prints, which has to succeed.
std::string printedBy(const std::vector<std::string>& command);

/// The version that a program prints.
std::string versionOf(const std::string& program);

/// The words in a text that look like options, short ones included, "--" not.
Texts optionsIn(const std::string& text);

/// The options in the help of each command of the terminal program, by the words after the program's name.
std::map<std::string, Texts> terminalOptions();

/// The options in the help of the desktop program.
Texts desktopOptions();

/// A file of the repository.
std::string sourcePath(const std::string& file);

/// A file that the build makes in packaging/.
std::string madePath(const std::string& file);

} // namespace tolvane::tests
