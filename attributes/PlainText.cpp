#include "attributes/Decoders.h"
#include "attributes/Parsing.h"

namespace tolvane::attributes {

namespace {

/// The text, one NUL at its end left out, where it is text.
std::expected<std::string_view, Misfit> plainText(const Subject& subject) {
    const std::string_view text = textWithoutNul(subject.bytes);
    if (const std::size_t nul = text.find('\0'); nul != std::string_view::npos) {
        return std::unexpected(Misfit{nul, "a text without NUL"});
    }
    if (!isText(text)) {
        return std::unexpected(Misfit{0, "text in UTF-8"});
    }
    return text;
}

} // namespace

Outcome decodeText(const Subject& subject, Answer& answer) {
    const auto text = plainText(subject);
    if (!text) {
        return std::unexpected(text.error());
    }
    answer.text(subject.label, *text);
    return {};
}

Outcome decodeTags(const Subject& subject, Answer& answer) {
    const auto text = plainText(subject);
    if (!text) {
        return std::unexpected(text.error());
    }
    std::string all;
    for (const std::string_view piece : piecesOf(*text, ',')) {
        if (const std::string_view tag = trimmed(piece); !tag.empty()) {
            answer.text("Tag", tag);
            all.append(all.empty() ? "" : "; ").append(tag);
        }
    }
    answer.summary(
        all.empty() ? "Tags given in a file manager: none."
                    : "Tags given in a file manager: " + shortened(all) + ".");
    return {};
}

Outcome decodeRating(const Subject& subject, Answer& answer) {
    const auto rating = parsedNumber<unsigned>(textWithoutNul(subject.bytes));
    if (!rating || *rating > 10) {
        return misfit(0, "a number from 0 to 10");
    }
    const std::string stars = std::to_string(*rating / 2) + (*rating % 2 == 1 ? " and a half" : "");
    answer.add("Rating", std::to_string(*rating) + " of 10", std::uint64_t{*rating});
    answer.add("Stars", stars + " of 5", *rating / 2.0);
    answer.summary("Rating given in a file manager or picture viewer: " + stars + " of 5 stars.");
    return {};
}

Outcome decodeTruth(const Subject& subject, Answer& answer) {
    const std::string_view text = textWithoutNul(subject.bytes);
    if (text != "true" && text != "false" && text != "1" && text != "0" && text != "y" && text != "n") {
        return misfit(0, "\"true\", \"false\", \"1\" or \"0\"");
    }
    answer.yes(subject.label, text == "true" || text == "1" || text == "y");
    return {};
}

Outcome decodeDecimal(const Subject& subject, Answer& answer) {
    const std::string_view text = textWithoutNul(subject.bytes);
    if (const auto number = parsedNumber<std::uint64_t>(text)) {
        answer.number(subject.label, *number);
        return {};
    }
    if (const auto number = parsedNumber<std::int64_t>(text)) {
        answer.signedNumber(subject.label, *number);
        return {};
    }
    return misfit(0, "a decimal number");
}

Outcome decodeEmpty(const Subject& subject, Answer& answer) {
    if (!subject.bytes.empty()) {
        answer.bytes("Value", subject.bytes);
        answer.note("A value, where a marker has none");
    }
    return {};
}

Outcome decodeOpaque(const Subject& subject, Answer& answer) {
    answer.bytes(subject.label.empty() ? "Bytes" : subject.label, subject.bytes);
    return {};
}

Outcome decodeUUIDText(const Subject& subject, Answer& answer) {
    const std::string_view text = textWithoutNul(subject.bytes);
    if (!isUUIDText(text)) {
        return misfit(0, "a UUID of 36 characters");
    }
    answer.text(subject.label, text);
    return {};
}

Outcome decodeIni(const Subject& subject, Answer& answer) {
    const auto text = plainText(subject);
    if (!text) {
        return std::unexpected(text.error());
    }
    std::string section;
    for (const std::string_view line : piecesOf(*text, '\n')) {
        const std::string_view entry = trimmed(line);
        const std::size_t equals = entry.find('=');
        if (entry.starts_with('[') && entry.ends_with(']')) {
            section = std::string(entry.substr(1, entry.size() - 2)) + " › ";
        } else if (equals != std::string_view::npos) {
            answer.text(section + std::string(entry.substr(0, equals)), entry.substr(equals + 1));
        } else if (!entry.empty()) {
            answer.text("Line", entry);
        }
    }
    return {};
}

} // namespace tolvane::attributes
