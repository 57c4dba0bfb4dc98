#include "tests/support/AttributeValues.h"

namespace tolvane::tests {

std::string littleEndian(std::uint64_t number, std::size_t width) {
    std::string bytes = bigEndian(number, width);
    return {bytes.rbegin(), bytes.rend()};
}

std::string bytesOfHex(std::string_view digits) {
    std::string bytes;
    std::string pair;
    for (const char digit : digits) {
        if (digit == ' ') {
            continue;
        }
        pair += digit;
        if (pair.size() == 2) {
            bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
            pair.clear();
        }
    }
    return bytes;
}

std::string utf16(std::string_view text) {
    std::string bytes;
    for (const char c : text) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

std::string posixAcl(const std::vector<PosixAclEntry>& entries) {
    std::string bytes = littleEndian(2, 4);
    for (const PosixAclEntry& entry : entries) {
        bytes +=
            littleEndian(entry.tag, 2) + littleEndian(entry.permissions, 2) + littleEndian(entry.account, 4);
    }
    return bytes;
}

std::string fileCapabilities(
    const std::vector<unsigned>& permitted,
    const std::vector<unsigned>& inheritable,
    bool effective,
    unsigned revision,
    std::uint32_t root) {
    std::array<std::uint32_t, 2> may{};
    std::array<std::uint32_t, 2> inherits{};
    for (const unsigned number : permitted) {
        may.at(number / 32) |= 1U << (number % 32);
    }
    for (const unsigned number : inheritable) {
        inherits.at(number / 32) |= 1U << (number % 32);
    }
    std::string bytes = littleEndian(revision << 24U | (effective ? 1U : 0U), 4);
    for (std::size_t i = 0; i < (revision == 1 ? 1U : 2U); ++i) {
        bytes += littleEndian(may.at(i), 4) + littleEndian(inherits.at(i), 4);
    }
    return revision == 3 ? bytes + littleEndian(root, 4) : bytes;
}

std::string nfs4Acl(const std::vector<Nfs4AclEntry>& entries) {
    std::string bytes = bigEndian(entries.size(), 4);
    for (const Nfs4AclEntry& entry : entries) {
        bytes += bigEndian(entry.type, 4) + bigEndian(entry.flags, 4) + bigEndian(entry.mask, 4)
                 + bigEndian(entry.who.size(), 4) + entry.who;
        while (bytes.size() % 4 != 0) {
            bytes += '\0';
        }
    }
    return bytes;
}

namespace {

std::string accountBytes(const WindowsAccount& account) {
    std::string bytes =
        bigEndian(1, 1) + bigEndian(account.parts.size(), 1) + bigEndian(account.authority, 6);
    for (const std::uint32_t part : account.parts) {
        bytes += littleEndian(part, 4);
    }
    return bytes;
}

} // namespace

std::string securityDescriptor(
    const WindowsAccount& owner,
    const WindowsAccount& group,
    const std::vector<WindowsEntry>& access,
    std::size_t base) {
    std::string entries;
    for (const WindowsEntry& entry : access) {
        const std::string who = accountBytes(entry.who);
        entries += littleEndian(entry.type, 1) + littleEndian(entry.flags, 1)
                   + littleEndian(8 + who.size(), 2) + littleEndian(entry.mask, 4) + who;
    }
    constexpr std::size_t headerSize = 20;
    const std::string first = accountBytes(owner);
    const std::string second = accountBytes(group);
    const std::size_t ownerAt = base + headerSize;
    const std::size_t groupAt = ownerAt + first.size();
    const std::size_t listAt = groupAt + second.size();
    return littleEndian(1, 1) + littleEndian(0, 1) + littleEndian(0x8004, 2) + littleEndian(ownerAt, 4)
           + littleEndian(groupAt, 4) + littleEndian(0, 4) + littleEndian(listAt, 4) + first + second
           + littleEndian(2, 2) + littleEndian(8 + entries.size(), 2) + littleEndian(access.size(), 2)
           + littleEndian(0, 2) + entries;
}

std::uint64_t windowsTicks(std::int64_t seconds, std::uint32_t hundredNanoseconds) {
    return static_cast<std::uint64_t>(seconds + 11'644'473'600) * 10'000'000 + hundredNanoseconds;
}

std::string symbolicLinkReparse(std::string_view target, std::string_view printed, bool relative) {
    const std::string first = utf16(target);
    const std::string second = utf16(printed);
    const std::string data = littleEndian(0, 2) + littleEndian(first.size(), 2)
                             + littleEndian(first.size(), 2) + littleEndian(second.size(), 2)
                             + littleEndian(relative ? 1 : 0, 4) + first + second;
    return littleEndian(0xA000000C, 4) + littleEndian(data.size(), 2) + littleEndian(0, 2) + data;
}

std::string finderInfoOfFile(
    std::string_view type, std::string_view creator, unsigned flags, int down, int across) {
    const auto word = [](int number) { return bigEndian(static_cast<std::uint16_t>(number), 2); };
    std::string bytes =
        std::string(type) + std::string(creator) + bigEndian(flags, 2) + word(down) + word(across);
    bytes.resize(32);
    return bytes;
}

std::string zlibStored(std::string_view content) {
    std::string bytes = bytesOfHex("7801");
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char c : content) {
        low = (low + static_cast<unsigned char>(c)) % 65'521;
        high = (high + low) % 65'521;
    }
    do {
        const std::string_view piece = content.substr(0, 0xFFFF);
        content.remove_prefix(piece.size());
        bytes += content.empty() ? '\1' : '\0';
        bytes += littleEndian(piece.size(), 2) + littleEndian(~piece.size(), 2) + std::string(piece);
    } while (!content.empty());
    return bytes + bigEndian(high << 16U | low, 4);
}

} // namespace tolvane::tests
