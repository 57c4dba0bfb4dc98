#include "attributes/StatusFactsInWords.h"

#include "attributes/Answer.h"
#include "attributes/Parsing.h"
#include "platform/values/Error.h"

#include <array>
#include <span>

namespace tolvane::attributes {

namespace {

using platform::Dictionary;
using platform::ItemAccess;
using platform::StatusFacts;

constexpr std::uint32_t permissionBits = 07777;

/// By the kernel's numbers, which file systems share.
struct InodeFlag {
    std::uint32_t bit;
    char letter; ///< Of `lsattr`.
    std::string_view name;
};

constexpr std::array inodeFlags{
    InodeFlag{0x00000001, 's', "secure deletion"},
    InodeFlag{0x00000002, 'u', "undeletable"},
    InodeFlag{0x00000004, 'c', "compressed"},
    InodeFlag{0x00000008, 'S', "synchronous updates"},
    InodeFlag{0x00000010, 'i', "immutable"},
    InodeFlag{0x00000020, 'a', "append only"},
    InodeFlag{0x00000040, 'd', "no dump"},
    InodeFlag{0x00000080, 'A', "no access times"},
    InodeFlag{0x00000400, 'm', "not compressed"},
    InodeFlag{0x00000800, 'E', "encrypted"},
    InodeFlag{0x00001000, 'I', "indexed folder"},
    InodeFlag{0x00004000, 'j', "journaled data"},
    InodeFlag{0x00008000, 't', "no tail merging"},
    InodeFlag{0x00010000, 'D', "synchronous folder updates"},
    InodeFlag{0x00020000, 'T', "top of a folder hierarchy"},
    InodeFlag{0x00080000, 'e', "extents"},
    InodeFlag{0x00100000, 'V', "verity"},
    InodeFlag{0x00800000, 'C', "no copy on write"},
    InodeFlag{0x02000000, 'x', "direct access"},
    InodeFlag{0x10000000, 'N', "inline data"},
    InodeFlag{0x20000000, 'P', "project hierarchy"},
    InodeFlag{0x40000000, 'F', "names in any case"}};

bool isFolder(std::uint32_t mode) {
    return (mode & 0170000U) == 0040000U;
}

bool isSymbolicLink(std::uint32_t mode) {
    return (mode & 0170000U) == 0120000U;
}

/// What read, write and execute permit.
std::span<const std::string_view> verbsFor(std::uint32_t mode) {
    static constexpr std::array<std::string_view, 3> ofFiles{"read", "write", "execute"};
    static constexpr std::array<std::string_view, 3> ofFolders{"list", "change entries", "enter"};
    return isFolder(mode) ? ofFolders : ofFiles;
}

/// "read, write", for three bits.
std::string permitted(std::uint32_t bits, std::uint32_t mode) {
    const auto verbs = verbsFor(mode);
    std::string text;
    for (std::size_t i = 0; i < verbs.size(); ++i) {
        if ((bits >> (verbs.size() - 1 - i) & 1U) != 0) {
            text.append(text.empty() ? "" : ", ").append(verbs[i]);
        }
    }
    return text.empty() ? "nothing" : text;
}

std::string octalDigits(std::uint32_t permissions) {
    std::string digits = "0000";
    for (std::size_t i = digits.size(); i > 0; --i, permissions >>= 3U) {
        digits[i - 1] = static_cast<char>('0' + (permissions & 7U));
    }
    return digits;
}

std::vector<std::vector<std::string>> cellsOf(std::uint32_t mode) {
    struct Row {
        std::string_view who;
        unsigned shift; ///< Of their three bits.
        std::uint32_t specialBit;
        std::string_view special;
    };
    static constexpr std::array<Row, 3> who{
        {{"Owner", 6, 04000, "set-user-ID"},
         {"Group", 3, 02000, "set-group-ID"},
         {"Others", 0, 01000, "sticky"}}};
    // Short enough for narrow columns.
    std::vector<std::vector<std::string>> rows{
        isFolder(mode) ? std::vector<std::string>{"", "list", "change", "enter"}
                       : std::vector<std::string>{"", "read", "write", "execute"}};
    for (const Row& row : who) {
        std::vector<std::string> cells{std::string(row.who)};
        for (const std::uint32_t bit : {04U, 02U, 01U}) {
            cells.emplace_back((mode >> row.shift & bit) != 0 ? "yes" : "-");
        }
        if ((mode & row.specialBit) != 0) {
            cells.emplace_back(row.special);
        }
        rows.push_back(std::move(cells));
    }
    return rows;
}

/// The rows as lines. No cell but the last is wider than its heading.
std::vector<std::string> linesOf(const std::vector<std::vector<std::string>>& rows) {
    constexpr std::size_t whoWidth = 6;
    constexpr std::size_t gap = 2;
    std::vector<std::string> lines;
    for (const auto& cells : rows) {
        std::string line;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            std::string cell = cells[i];
            if (i + 1 < cells.size()) {
                cell.resize((i == 0 ? whoWidth : rows.front()[i].size()) + gap, ' ');
            }
            line += cell;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

void addSpecialBits(const StatusFacts& facts, Answer& answer) {
    std::string text;
    const auto add = [&](std::uint32_t bit, std::string_view meaning) {
        if ((facts.mode & bit) != 0) {
            text.append(text.empty() ? "" : "; ").append(meaning);
        }
    };
    const bool folder = isFolder(facts.mode);
    add(04000, folder ? "set-user-ID, without effect on folders" : "set-user-ID: runs as its owner");
    add(02000,
        folder ? "set-group-ID: new entries get the folder's group" : "set-group-ID: runs with its group");
    add(01000, folder ? "sticky: entries are renamed and deleted by their owners, the folder's owner and root"
                      : "sticky, without effect on files");
    if (!text.empty()) {
        answer.add("Special bits", text, std::uint64_t{facts.mode & 07000U});
    }
}

void addCurrentAccess(const ItemAccess& access, std::uint32_t mode, Answer& answer) {
    const auto verbs = verbsFor(mode);
    const std::array refusals{access.read, access.write, access.execute};
    std::string text;
    for (std::size_t i = 0; i < refusals.size(); ++i) {
        text.append(text.empty() ? "" : "; ").append(refusals[i] == 0 ? "" : "not ").append(verbs[i]);
        if (refusals[i] != 0) {
            text.append(" (").append(platform::posixError(refusals[i]).localizedDescription()).append(")");
        }
    }
    answer.add(
        "Current user", text,
        Dictionary{
            {"read", access.read == 0}, {"write", access.write == 0}, {"execute", access.execute == 0}});
}

void addFlags(const StatusFacts& facts, Answer& answer) {
    std::string set;
    std::string known;
    std::string unknown;
    for (const InodeFlag& flag : inodeFlags) {
        const bool isKnown = (facts.knownFlags & flag.bit) != 0;
        std::string& letters = isKnown ? known : unknown;
        letters += std::string(letters.empty() ? "" : " ") + flag.letter;
        if (isKnown && (facts.flags & flag.bit) != 0) {
            set.append(set.empty() ? "" : ", ").append(flag.name).append(" (") += flag.letter;
            set += ')';
        }
    }
    if (facts.knownFlags != 0) {
        answer.add(
            "Flags", set.empty() ? "none of " + known : set, std::uint64_t{facts.flags & facts.knownFlags});
    }
    answer.note(
        "Not known without opening the item: the project number, and the flags that lsattr shows as "
        + unknown);
}

} // namespace

StatusFactsInWords explainFacts(const StatusFacts& facts, bool hasAccessList, const Questions& questions) {
    StatusFactsInWords result{{}, cellsOf(facts.mode), {}};
    result.grid = linesOf(result.cells);
    result.words.title = "Permissions and status";
    Answer answer(result.words, questions);
    const std::uint32_t permissions = facts.mode & permissionBits;
    const std::string owner = answer.accountText(AccountKind::user, facts.ownerID);
    const std::string group = answer.accountText(AccountKind::group, facts.groupID);
    std::string kind(kindOfMode(facts.mode));
    kind = kind.empty() ? "item" : kind;
    if (isSymbolicLink(facts.mode)) {
        answer.summary("Permissions of a symbolic link, which have no effect: those of its target count.");
    } else {
        answer.summary(
            "What is permitted on this " + kind + ": its owner " + owner + ": "
            + permitted(facts.mode >> 6U & 7U, facts.mode) + "; group " + group + ": "
            + permitted(facts.mode >> 3U & 7U, facts.mode)
            + "; others: " + permitted(facts.mode & 7U, facts.mode) + ".");
    }
    answer.add(
        "Permissions", permissionLetters(facts.mode) + " (" + octalDigits(permissions) + ")",
        std::uint64_t{permissions});
    addSpecialBits(facts, answer);
    if (facts.currentAccess) {
        addCurrentAccess(*facts.currentAccess, facts.mode, answer);
    }
    answer.number("Size on disk", facts.allocatedSize, "bytes");
    if (facts.accessDate) {
        answer.date("Last access", *facts.accessDate);
    }
    if (facts.statusChangeDate) {
        answer.date("Status change", *facts.statusChangeDate);
    }
    if (hasAccessList) {
        answer.note(
            "The item has an access control list: the group's permissions are its mask, and who may do what "
            "is in the list");
    }
    addFlags(facts, answer);
    answer.finish();
    return result;
}

} // namespace tolvane::attributes
