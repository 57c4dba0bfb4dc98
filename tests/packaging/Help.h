// What the programs print about themselves, to compare other files with.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

using Texts = std::set<std::string>;

/// What the command prints, which has to succeed.
std::string printedBy(const std::vector<std::string>& command);

/// The version that a program prints.
std::string versionOf(const std::string& program);

/// The words in a text that look like options, short ones included, "--" not.
Texts optionsIn(std::string_view text);

/// Every command of the terminal program with its own help, as the words after the program's name.
std::vector<std::vector<std::string>> terminalCommands();

/// A file of the repository.
std::string sourcePath(const std::string& file);

/// A file that the build makes in packaging/.
std::string madePath(const std::string& file);

} // namespace tolvane::tests
