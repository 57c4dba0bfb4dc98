#include "attributes/AttributeName.h"
#include "attributes/Explanation.h"
#include "attributes/Family.h"
#include "attributes/Guess.h"
#include "platform/values/Utf8.h"

#include <string>

namespace tolvane::attributes {

namespace {

Explanation explainAtDepth(
    std::string_view name, std::span<const std::byte> value, const Questions& questions, unsigned depth) {
    const AttributeName known = attributeName(name);
    if (known.isStream && !value.empty() && value.back() == std::byte{0}) {
        value = value.first(value.size() - 1);
    }
    Explanation explanation;
    explanation.name = platform::shownText(name);
    const Family* const family = familyNamed(known.known);
    const Subject subject{known.known, name, family != nullptr ? family->label : "", value, questions, depth};
    if (family != nullptr) {
        explanation.title = family->title;
        explanation.summary = family->summary;
        explanation.certainty = family->certainty;
        Explanation filled = explanation;
        Answer answer(filled, questions);
        if (const Outcome outcome = family->decode(subject, answer)) {
            answer.finish();
            explanation = std::move(filled);
        } else {
            Answer fallback(explanation, questions);
            fallback.bytes("Bytes", value);
            fallback.note(
                "Not in the expected form: at byte " + std::to_string(outcome.error().offset) + " of "
                + std::to_string(value.size()) + ", " + outcome.error().expected + " was expected");
        }
    } else {
        Answer answer(explanation, questions);
        explainByGuess(subject, answer);
        answer.finish();
    }
    if (!known.flags.empty()) {
        explanation.fields.push_back({"Copying", flagLetterNames(known.flags), known.flags});
    }
    return explanation;
}

} // namespace

std::string_view nameOf(Certainty certainty) {
    switch (certainty) {
    case Certainty::documented:
        return "documented";
    case Certainty::observed:
        return "observed";
    case Certainty::guess:
        return "guess";
    case Certainty::opaque:
        return "opaque";
    }
    return {};
}

Explanation explain(std::string_view name, std::span<const std::byte> value, const Questions& questions) {
    return explainAtDepth(name, value, questions, 0);
}

Explanation explainWithin(const Subject& outer, std::string_view name, std::span<const std::byte> value) {
    return explainAtDepth(name, value, outer.questions, outer.depth + 1);
}

void addNested(Answer& answer, std::string_view heading, const Explanation& nested) {
    answer.text(heading, nested.summary);
    const std::string before = std::string(heading) + " › ";
    for (const Field& field : nested.fields) {
        answer.add(before + field.name, field.text, field.value);
    }
    for (const std::string& note : nested.notes) {
        answer.note(std::string(heading) + ": " + note);
    }
}

} // namespace tolvane::attributes
