#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::array<Flag, 3> handleFlags{{{1, "big-endian"}, {2, "any byte order"}, {4, "upper layer"}}};

/// A file handle: which file system, and which of its files.
Outcome addHandle(const Subject& subject, Answer& answer) {
    constexpr std::uint8_t magic = 0xFB;
    constexpr std::uint8_t inode32 = 1;
    ByteCursor cursor(subject.bytes);
    const std::uint8_t version = cursor.u8();
    const std::uint8_t found = cursor.u8();
    const std::uint8_t length = cursor.u8();
    const std::uint8_t flags = cursor.u8();
    const std::uint8_t type = cursor.u8();
    const auto uuid = cursor.take(16);
    if (cursor.failed() || version != 0 || found != magic || length != subject.bytes.size()) {
        return misfit(0, "a file handle of version 0 and its length");
    }
    const auto file = cursor.take(cursor.remaining());
    ByteCursor numbers(file);
    if (type == inode32 && file.size() == 8) {
        answer.number("Inode", numbers.u32le());
        answer.number("Generation", numbers.u32le());
    } else if (type == 0x81 && file.size() == 12) {
        answer.number("Inode", numbers.u64le());
        answer.number("Generation", numbers.u32le());
    } else {
        answer.bytes("File", file);
    }
    answer.uuid("File system", uuid);
    answer.number("Handle type", type);
    answer.flags("Flags", flags, handleFlags, 2);
    return {};
}

Outcome addMetacopy(const Subject& subject, Answer& answer) {
    static constexpr std::array<Named, 3> algorithms{{{0, "none"}, {1, "SHA-256"}, {2, "SHA-512"}}};
    answer.summary("Overlay: only the metadata is here; the content is in a lower layer.");
    if (subject.bytes.empty()) {
        return {};
    }
    ByteCursor cursor(subject.bytes);
    const std::uint8_t version = cursor.u8();
    const std::uint8_t length = cursor.u8();
    const std::uint8_t flags = cursor.u8();
    const std::uint8_t algorithm = cursor.u8();
    if (cursor.failed() || version != 0 || length != subject.bytes.size()) {
        return misfit(0, "version 0 and the length");
    }
    answer.hex("Flags", flags, 2);
    answer.named("Digest of the content", algorithm, algorithms);
    if (cursor.remaining() > 0) {
        answer.bytes("Digest", cursor.take(cursor.remaining()));
    }
    return {};
}

Outcome addLinkCount(std::string_view text, Answer& answer) {
    const bool isDigits = text.find_first_not_of("0123456789", 2) == std::string_view::npos;
    const auto count = text.size() > 2 && isDigits
                           ? parsedNumber<std::int64_t>(text.substr(text[1] == '+' ? 2 : 1))
                           : std::nullopt;
    if (!count || (text[0] != 'U' && text[0] != 'L') || (text[1] != '+' && text[1] != '-')) {
        return misfit(0, "\"U\" or \"L\", and a difference like \"-1\"");
    }
    const std::string layer = text[0] == 'U' ? "upper" : "lower";
    answer.text("Layer", layer);
    answer.add("Difference", std::string(text.substr(1)), *count);
    answer.summary(
        "Overlay: the link count is that of the " + layer + " layer's file, "
        + (*count < 0 ? "minus " + std::to_string(*count).substr(1) : "plus " + std::to_string(*count))
        + ".");
    return {};
}

} // namespace

Outcome decodeOverlay(const Subject& subject, Answer& answer) {
    const std::string_view key = subject.name.substr(subject.name.rfind('.') + 1);
    const std::string_view text = textWithoutNul(subject.bytes);
    if (key == "origin" || key == "upper") {
        answer.summary(
            key == "origin" ? "Overlay: which file of a lower layer this one was copied from."
                            : "Overlay: which file of the upper layer an index entry is for.");
        return addHandle(subject, answer);
    }
    if (key == "metacopy") {
        return addMetacopy(subject, answer);
    }
    if (key == "nlink") {
        return addLinkCount(text, answer);
    }
    if (key == "uuid") {
        if (subject.bytes.size() != 16) {
            return misfit(0, "16 bytes");
        }
        answer.uuid("File system", subject.bytes);
        answer.summary("Overlay: the UUID of the file system that the layers make.");
        return {};
    }
    if (key == "redirect") {
        answer.summary("Overlay: what lies below this folder is found in the lower layers at another place.");
        if (!isText(text)) {
            return misfit(0, "a path");
        }
        answer.text("Path", text);
        return {};
    }
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 5> sentences{
        {{"opaque", "Overlay: the folder hides what lower layers have at its place."},
         {"impure",
          "Overlay: the upper layer's folder holds entries that were copied up from a lower layer."},
         {"whiteout", "Overlay: the item marks that the lower layers' item was deleted."},
         {"whiteouts", "Overlay: the folder holds marks of deleted items."},
         {"protattr", "Overlay: flags that the item has as seen through the layers."}}};
    for (const auto& [known, sentence] : sentences) {
        if (key == known) {
            answer.summary(sentence);
        }
    }
    if (key == "opaque" && text == "x") {
        answer.summary("Overlay: the folder holds marks of deleted items that are attributes.");
    }
    if (key == "protattr") {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] != 'i' && text[i] != 'a') {
                return misfit(i, "the letters i and a");
            }
            answer.yes(text[i] == 'i' ? "Immutable" : "Append only", true);
        }
        return {};
    }
    if (!isText(text)) {
        return misfit(0, "text in UTF-8");
    }
    answer.text("Value", text);
    return {};
}

} // namespace tolvane::attributes
