// What the programs say of themselves, to compare with what others say of them.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

using Texts = std::set<std::string>;

/// What the program prints when it is called like this, which has to be well.
std::string printedBy(std::vector<std::string> command);

/// The words in a text that look like options, short ones included, "--" not.
Texts optionsIn(std::string_view text);

/// Every command of the terminal program that has a help of its own, as the words after the program's name.
std::vector<std::vector<std::string>> terminalCommands();

/// A file of the repository.
std::string sourcePath(const std::string& file);

/// A file that the build has made in packaging/.
std::string madePath(const std::string& file);

} // namespace tolvane::tests
