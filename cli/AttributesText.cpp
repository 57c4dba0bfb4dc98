#include "cli/AttributesText.h"

#include "cli/TerminalText.h"

namespace tolvane::cli {

using attributes::Certainty;
using attributes::Explanation;

std::string attributeLines(const Explanation& explanation, bool isTerminal) {
    constexpr std::string_view indent = "    ";
    std::string lines =
        explanation.title + ": " + (isTerminal ? terminalLine(explanation.name) : explanation.name);
    if (explanation.certainty == Certainty::guess || explanation.certainty == Certainty::opaque) {
        lines.append(" (").append(nameOf(explanation.certainty)).append(")");
    }
    lines.append("\n").append(indent).append(explanation.summary).append("\n");
    for (const attributes::Field& field : explanation.fields) {
        lines.append(indent).append(indent).append(field.name).append(": ").append(field.text).append("\n");
    }
    for (const std::string& note : explanation.notes) {
        lines.append(indent).append("Note: ").append(note).append("\n");
    }
    return lines;
}

} // namespace tolvane::cli
