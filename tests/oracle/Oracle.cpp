#include "tests/oracle/Oracle.h"

#include "tests/oracle/ProgramsOnPaths.h"
#include "tests/oracle/Tolvane.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <span>
#include <string_view>
#include <utility>

namespace tolvane::tests {

namespace {

using Items = std::map<std::string, ItemFacts>;
using Texts = std::vector<std::string>;

Items statusOf(const Texts& paths, std::optional<std::uint32_t> user) {
    Items items;
    const Texts facts{"%f", "%s", "%d", "%i", "%h", "%u", "%g", "%w", "%y"};
    for (const auto& [path, texts] : statOf({"stat"}, facts, paths, user)) {
        items[path] = {
            .mode = numberIn(texts[0], 16),
            .size = numberIn(texts[1]),
            .device = numberIn(texts[2]),
            .inode = numberIn(texts[3]),
            .links = numberIn(texts[4]),
            .user = numberIn(texts[5]),
            .group = numberIn(texts[6]),
            .created = texts[7] == "-" ? "" : texts[7],
            .modified = texts[8]};
    }
    return items;
}

// getfattr writes a backslash, line ends and, in names of attributes, '=' as three octal digits.
std::string unescaped(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size()) {
            bytes += static_cast<char>(numberIn(text.substr(i + 1, 3), 8));
            i += 3;
        } else {
            bytes += text[i];
        }
    }
    return bytes;
}

std::string bytesOfHex(std::string_view digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(numberIn(digits.substr(i, 2), 16));
    }
    return bytes;
}

// The path that a complaint of getfattr is about: "PATH: reason", with or without the program's name before
// it.
std::optional<std::string> pathOfComplaint(std::string_view line, std::span<const std::string> paths) {
    constexpr std::string_view program = "getfattr: ";
    if (line.starts_with(program)) {
        line.remove_prefix(program.size());
    }
    for (auto colon = line.find(": "); colon != std::string_view::npos; colon = line.find(": ", colon + 1)) {
        std::string path = unescaped(line.substr(0, colon));
        if (std::ranges::find(paths, path) != paths.end()) {
            return path;
        }
    }
    return std::nullopt;
}

void addAttributes(Items& items, const Texts& paths, std::optional<std::uint32_t> user) {
    const Texts command{"getfattr", "-d", "-m", "-", "-e", "hex", "--absolute-names", "--"};
    runInBatches(command, paths, user, [&items](const ProcessOutcome& outcome, const auto& batch) {
        for (const auto& path : batch) {
            items.at(path).attributes.emplace();
        }
        constexpr std::string_view heading = "# file: ";
        ItemFacts* facts = nullptr;
        for (const std::string_view line : linesOf(outcome.out)) {
            if (line.starts_with(heading)) {
                facts = &items.at(unescaped(line.substr(heading.size())));
            } else if (!line.empty()) {
                const auto equals = std::min(line.find("=0x"), line.size());
                const auto value = equals == line.size() ? std::string_view() : line.substr(equals + 3);
                facts->attributes->emplace(unescaped(line.substr(0, equals)), bytesOfHex(value));
            }
        }
        for (const auto& line : linesOf(outcome.err)) {
            const auto path = pathOfComplaint(line, batch);
            EXPECT_TRUE(path) << line;
            if (path) {
                items.at(*path).attributes.reset();
            }
        }
    });
}

// The names of the numbers, from one of the account databases.
std::map<std::uint64_t, std::string> namesIn(
    const std::string& database, const std::set<std::uint64_t>& numbers) {
    Texts keys;
    for (const auto key : numbers) {
        keys.push_back(std::to_string(key));
    }
    std::map<std::uint64_t, std::string> names;
    runInBatches({"getent", database}, keys, {}, [&names](const ProcessOutcome& outcome, const auto&) {
        for (const auto& line : linesOf(outcome.out)) {
            const auto nameEnd = line.find(':');
            const auto numberStart = line.find(':', nameEnd + 1) + 1;
            const auto numberEnd = line.find(':', numberStart);
            names[numberIn(std::string_view(line).substr(numberStart, numberEnd - numberStart))] =
                line.substr(0, nameEnd);
        }
    });
    return names;
}

void addNames(Items& items) {
    std::set<std::uint64_t> users;
    std::set<std::uint64_t> groups;
    for (const auto& [path, facts] : items) {
        users.insert(facts.user);
        groups.insert(facts.group);
    }
    auto userNames = namesIn("passwd", users);
    auto groupNames = namesIn("group", groups);
    for (auto& [path, facts] : items) {
        facts.userName = userNames[facts.user];
        facts.groupName = groupNames[facts.group];
    }
}

} // namespace

std::map<std::string, ItemFacts> lookAt(const Texts& paths, std::optional<std::uint32_t> user) {
    Items items = statusOf(paths, user);
    Texts found;
    for (const auto& [path, facts] : items) {
        found.push_back(path);
    }
    addAttributes(items, found, user);
    addNames(items);
    return items;
}

} // namespace tolvane::tests
