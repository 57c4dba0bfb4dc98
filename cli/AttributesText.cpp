#include "cli/AttributesText.h"

#include "attributes/Answer.h"
#include "cli/TerminalText.h"

#include <string_view>

namespace tolvane::cli {

using attributes::Certainty;
using attributes::Explanation;

namespace {

constexpr std::string_view indent = "    ";

/// The lines below the title.
std::string linesOf(const Explanation& explanation) {
    std::string lines;
    lines.append(indent).append(explanation.summary).append("\n");
    for (const attributes::Field& field : explanation.fields) {
        lines.append(indent).append(indent).append(field.name).append(": ").append(field.text).append("\n");
    }
    for (const std::string& note : explanation.notes) {
        lines.append(indent).append("Note: ").append(note).append("\n");
    }
    return lines;
}

} // namespace

std::string attributeLines(const Explanation& explanation, bool isTerminal) {
    std::string lines =
        explanation.title + ": " + (isTerminal ? terminalLine(explanation.name) : explanation.name);
    if (explanation.certainty == Certainty::guess || explanation.certainty == Certainty::opaque) {
        lines.append(" (").append(nameOf(explanation.certainty)).append(")");
    }
    return lines + "\n" + linesOf(explanation);
}

std::string factLines(const attributes::StatusFactsInWords& facts) {
    std::string lines = facts.words.title + "\n";
    for (const std::string& line : facts.grid) {
        lines.append(indent).append(indent).append(line).append("\n");
    }
    return lines + linesOf(facts.words);
}

std::string verifiedLines(const std::vector<verification::Verified>& verified) {
    std::string lines = verified.empty() ? "Checksums: none stored\n" : "Checksums\n";
    for (const verification::Verified& one : verified) {
        lines.append(indent).append(attributes::visibleText(verification::sentenceAbout(one))).append("\n");
    }
    return lines;
}

} // namespace tolvane::cli
