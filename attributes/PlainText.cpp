#include "attributes/Decoders.h"
#include "attributes/Parsing.h"

#include <array>

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

constexpr std::array<std::pair<std::size_t, std::string_view>, 6> digestLengths{
    {{32, "MD5"}, {40, "SHA-1"}, {56, "SHA-224"}, {64, "SHA-256"}, {96, "SHA-384"}, {128, "SHA-512"}}};

/// The algorithm that a name states, as it is written in it.
std::string_view algorithmInName(std::string_view name, std::size_t digits) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 12> known{
        {{"sha512", "SHA-512"},
         {"sha-512", "SHA-512"},
         {"sha384", "SHA-384"},
         {"sha256", "SHA-256"},
         {"sha-256", "SHA-256"},
         {"sha224", "SHA-224"},
         {"sha1", "SHA-1"},
         {"sha-1", "SHA-1"},
         {"md5", "MD5"},
         {"blake3", "BLAKE3"},
         {"blake2b", "BLAKE2b"},
         {"crc32", "CRC-32"}}};
    std::string lower(name);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    for (const auto& [part, algorithm] : known) {
        if (lower.contains(part)) {
            return algorithm;
        }
    }
    for (const auto& [length, algorithm] : digestLengths) {
        if (length == digits) {
            return algorithm;
        }
    }
    return {};
}

/// How many hexadecimal digits a digest has; 0 if its length is not fixed.
std::size_t digitsOf(std::string_view algorithm) {
    if (algorithm == "CRC-32") {
        return 8;
    }
    for (const auto& [length, name] : digestLengths) {
        if (name == algorithm) {
            return length;
        }
    }
    return 0;
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

Outcome decodeChecksum(const Subject& subject, Answer& answer) {
    const std::string_view text = trimmed(textWithoutNul(subject.bytes));
    const bool isHex = isHexText(text);
    const std::size_t digits = isHex ? text.size() : subject.bytes.size() * 2;
    const std::string_view algorithm = algorithmInName(subject.name, digits);
    const std::size_t expected = digitsOf(algorithm);
    if (algorithm.empty()) {
        return misfit(0, "a name that states the algorithm, or a digest of a usual length");
    }
    if (expected != 0 && digits != expected) {
        return misfit(
            0, std::string(algorithm) + " in " + std::to_string(expected) + " digits, or half as many bytes");
    }
    answer.text("Algorithm", algorithm);
    if (isHex) {
        answer.text("Checksum", text);
    } else {
        answer.bytes("Checksum", subject.bytes);
    }
    answer.summary(
        "Checksum of the file's content (" + std::string(algorithm)
        + ") at some time in the past; whether it still fits is not known without reading the content.");
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
