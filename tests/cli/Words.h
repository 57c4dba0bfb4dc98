#pragma once

#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace tolvane::tests {

/// Arguments: one by one, or as a line that ends each at a space.
struct Words : std::vector<std::string> {
    Words(std::initializer_list<std::string> words) : vector(words) {}
    Words(const char* line) {
        std::istringstream stream(line);
        for (std::string word; stream >> word;) {
            push_back(word);
        }
    }
};

} // namespace tolvane::tests
