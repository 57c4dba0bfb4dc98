#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <algorithm>
#include <array>
#include <limits>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr auto unlimited = std::numeric_limits<std::uint64_t>::max();

constexpr std::array<Named, 13> signalNames{
    {{3, "SIGQUIT"},
     {4, "SIGILL"},
     {5, "SIGTRAP"},
     {6, "SIGABRT"},
     {7, "SIGBUS"},
     {8, "SIGFPE"},
     {9, "SIGKILL"},
     {11, "SIGSEGV"},
     {13, "SIGPIPE"},
     {15, "SIGTERM"},
     {24, "SIGXCPU"},
     {25, "SIGXFSZ"},
     {31, "SIGSYS"}}};

/// "uid:gid" or the like; nothing unless both are numbers.
std::optional<std::pair<std::uint32_t, std::uint32_t>> numberPair(std::string_view text, char separator) {
    const std::vector<std::string_view> parts = piecesOf(text, separator);
    if (parts.size() != 2) {
        return std::nullopt;
    }
    const auto first = parsedNumber<std::uint32_t>(parts[0]);
    const auto second = parsedNumber<std::uint32_t>(parts[1]);
    return first && second ? std::optional(std::pair(*first, *second)) : std::nullopt;
}

void addMode(Answer& answer, std::uint32_t mode) {
    if (const std::string_view kind = kindOfMode(mode); !kind.empty()) {
        answer.text("Kind", kind);
    }
    std::string octal = "0000";
    for (std::size_t i = 0; i < octal.size(); ++i) {
        octal[octal.size() - 1 - i] = static_cast<char>('0' + (mode >> (3 * i) & 7U));
    }
    answer.add("Permissions", permissionLetters(mode) + " (" + octal + ")", mode & 07777U);
}

} // namespace

Outcome decodeCoredump(const Subject& subject, Answer& answer) {
    const std::string_view key = subject.name.substr(subject.name.rfind('.') + 1);
    const std::string_view text = textWithoutNul(subject.bytes);
    if (key == "hostname" || key == "comm" || key == "exe") {
        return decodeText(subject, answer);
    }
    const auto number = parsedNumber<std::uint64_t>(text);
    if (!number) {
        return misfit(0, "a decimal number");
    }
    constexpr auto greatestAccount = std::numeric_limits<std::uint32_t>::max();
    if (key == "timestamp") {
        answer.date(subject.label, dateOfMicroseconds(*number));
    } else if (key == "rlimit" && *number == unlimited) {
        answer.add(subject.label, "unlimited", *number);
    } else if (key == "rlimit") {
        answer.number(subject.label, *number, "bytes");
    } else if (key == "signal") {
        answer.named(subject.label, *number, signalNames);
    } else if ((key == "uid" || key == "gid") && *number <= greatestAccount) {
        answer.account(
            subject.label, key == "uid" ? AccountKind::user : AccountKind::group,
            static_cast<std::uint32_t>(*number));
    } else {
        answer.number(subject.label, *number);
    }
    return {};
}

Outcome decodeCreationMicroseconds(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint64_t time = cursor.u64le();
    if (cursor.failed() || cursor.remaining() != 0) {
        return misfit(0, "8 bytes");
    }
    if (time == unlimited) {
        answer.add("Created", "unknown", time);
    } else {
        answer.date("Created", dateOfMicroseconds(time));
    }
    return {};
}

Outcome decodeSecondsText(const Subject& subject, Answer& answer) {
    const auto date = dateInSecondsText(textWithoutNul(subject.bytes));
    if (!date) {
        return misfit(0, "seconds since 1970, a point and nanoseconds");
    }
    answer.date(subject.label, *date);
    return {};
}

Outcome decodePaxFlags(const Subject& subject, Answer& answer) {
    static constexpr std::array<std::pair<char, std::string_view>, 5> names{
        {{'p', "PAGEEXEC"}, {'e', "EMUTRAMP"}, {'m', "MPROTECT"}, {'r', "RANDMMAP"}, {'s', "SEGMEXEC"}}};
    const std::string_view text = textWithoutNul(subject.bytes);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isOn = text[i] >= 'A' && text[i] <= 'Z';
        const char lower = isOn ? static_cast<char>(text[i] - 'A' + 'a') : text[i];
        const auto* const name = std::ranges::find(names, lower, &std::pair<char, std::string_view>::first);
        if (name == names.end()) {
            return misfit(i, "one of the letters P, E, M, R and S");
        }
        answer.add(name->second, isOn ? "on" : "off", isOn);
    }
    return {};
}

Outcome decodeRsyncStat(const Subject& subject, Answer& answer) {
    const std::vector<std::string_view> parts = piecesOf(textWithoutNul(subject.bytes), ' ');
    constexpr std::string_view form = "\"mode major,minor uid:gid\"";
    if (parts.size() != 3) {
        return misfit(0, std::string(form));
    }
    const auto mode = parsedNumber<std::uint32_t>(parts[0], 8);
    const auto device = numberPair(parts[1], ',');
    const auto owner = numberPair(parts[2], ':');
    if (!mode || !device || !owner) {
        return misfit(0, std::string(form));
    }
    addMode(answer, *mode);
    if (*device != std::pair(0U, 0U)) {
        answer.add(
            "Device", std::to_string(device->first) + ", " + std::to_string(device->second),
            platform::Array{device->first, device->second});
    }
    answer.account("Owner", AccountKind::user, owner->first);
    answer.account("Group", AccountKind::group, owner->second);
    return {};
}

Outcome decodeOverrideStat(const Subject& subject, Answer& answer) {
    const std::vector<std::string_view> parts = piecesOf(textWithoutNul(subject.bytes), ':');
    constexpr std::string_view form = "\"uid:gid:mode\", with or without a type behind it";
    if (parts.size() != 3 && parts.size() != 4) {
        return misfit(0, std::string(form));
    }
    const auto user = parsedNumber<std::uint32_t>(parts[0]);
    const auto group = parsedNumber<std::uint32_t>(parts[1]);
    const auto mode = parsedNumber<std::uint32_t>(parts[2], 8);
    if (!user || !group || !mode) {
        return misfit(0, std::string(form));
    }
    answer.account("Owner", AccountKind::user, *user);
    answer.account("Group", AccountKind::group, *group);
    addMode(answer, *mode);
    if (parts.size() == 4) {
        answer.text("Type", parts[3]);
    }
    return {};
}

Outcome decodeCompression(const Subject& subject, Answer& answer) {
    const std::string_view text = textWithoutNul(subject.bytes);
    const std::string_view algorithm = text.substr(0, text.find(':'));
    if (text.empty() || text == "none" || text == "no") {
        answer.text("Compression", "none");
        answer.summary("Btrfs does not compress what is written to this item.");
        return {};
    }
    if (algorithm != "zlib" && algorithm != "lzo" && algorithm != "zstd") {
        return misfit(0, "zlib, lzo, zstd, none or no");
    }
    answer.text("Compression", text);
    answer.summary("Btrfs compresses what is written to this item with " + shortened(text) + ".");
    return {};
}

Outcome decodeSecurityContext(const Subject& subject, Answer& answer) {
    const std::string_view text = textWithoutNul(subject.bytes);
    if (!isText(text)) {
        return misfit(0, "a text without NUL but at its end");
    }
    const std::vector<std::string_view> parts = piecesOf(text, ':');
    if (parts.size() < 3) {
        return misfit(0, "\"user:role:type\" or \"user:role:type:range\"");
    }
    answer.text("Context", text);
    answer.text("User", parts[0]);
    answer.text("Role", parts[1]);
    answer.text("Type", parts[2]);
    if (parts.size() > 3) {
        // A range has colons itself.
        answer.text("Range", text.substr(static_cast<std::size_t>(parts[3].data() - text.data())));
    }
    answer.summary("SELinux: the item has the type " + shortened(parts[2]) + "; rules say who may use that.");
    return {};
}

Outcome decodeCephText(const Subject& subject, Answer& answer) {
    const std::string_view text = textWithoutNul(subject.bytes);
    if (!isText(text)) {
        return misfit(0, "text in UTF-8");
    }
    if (subject.name.ends_with("time")) {
        return decodeSecondsText(subject, answer);
    }
    if (!text.contains('=')) {
        answer.text(subject.label.empty() ? "Value" : subject.label, text);
        return {};
    }
    for (const std::string_view pair : piecesOf(text, ' ')) {
        const std::size_t equals = pair.find('=');
        if (equals == std::string_view::npos) {
            return misfit(static_cast<std::size_t>(pair.data() - text.data()), "\"key=value\"");
        }
        answer.text(pair.substr(0, equals), pair.substr(equals + 1));
    }
    return {};
}

} // namespace tolvane::attributes
