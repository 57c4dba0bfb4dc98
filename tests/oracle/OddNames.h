// Names of every kind that programs handle wrongly.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace tolvane::tests {

struct OddName {
    const char* kind;
    /// What the name is made of, again and again.
    std::string piece;
    bool isText = true;
    /// What stands once before all the rest.
    std::string start = {};

    /// The name of 255 bytes.
    std::string longest() const;

    friend std::ostream& operator<<(std::ostream& stream, const OddName& odd) { return stream << odd.kind; }
};

const std::vector<OddName>& oddNames();

} // namespace tolvane::tests
