#include "attributes/Decoders.h"
#include "platform/values/ByteCursor.h"

#include <array>
#include <bit>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::array<std::string_view, 41> capabilityNames{
    "chown",
    "dac_override",
    "dac_read_search",
    "fowner",
    "fsetid",
    "kill",
    "setgid",
    "setuid",
    "setpcap",
    "linux_immutable",
    "net_bind_service",
    "net_broadcast",
    "net_admin",
    "net_raw",
    "ipc_lock",
    "ipc_owner",
    "sys_module",
    "sys_rawio",
    "sys_chroot",
    "sys_ptrace",
    "sys_pacct",
    "sys_admin",
    "sys_boot",
    "sys_nice",
    "sys_resource",
    "sys_time",
    "sys_tty_config",
    "mknod",
    "lease",
    "audit_write",
    "audit_control",
    "setfcap",
    "mac_override",
    "mac_admin",
    "syslog",
    "wake_alarm",
    "block_suspend",
    "audit_read",
    "perfmon",
    "bpf",
    "checkpoint_restore"};

std::string capabilityName(std::size_t number) {
    return number < capabilityNames.size() ? "cap_" + std::string(capabilityNames[number])
                                           : std::to_string(number);
}

std::string namesOf(std::uint64_t set) {
    std::string text;
    for (std::size_t i = 0; i < 64; ++i) {
        if ((set >> i & 1U) != 0) {
            text.append(text.empty() ? "" : ",").append(capabilityName(i));
        }
    }
    return text.empty() ? "none" : text;
}

enum State : unsigned { isEffective = 1, isPermitted = 2, isInheritable = 4, everyState = 7 };

std::string lettersOf(unsigned state) {
    return std::string((state & isEffective) != 0 ? "e" : "") + ((state & isInheritable) != 0 ? "i" : "")
           + ((state & isPermitted) != 0 ? "p" : "");
}

/// What differs from the state that most capabilities have: "+i", "-p" or both.
std::string difference(unsigned state, unsigned base) {
    const unsigned added = state & ~base;
    const unsigned removed = base & ~state;
    return (added != 0 ? "+" + lettersOf(added) : std::string())
           + (removed != 0 ? "-" + lettersOf(removed) : std::string());
}

/// The capabilities as the usual tools write them: first the state of most of them where it is not empty,
/// then a clause for all of each other state.
std::string clauses(std::uint64_t permitted, std::uint64_t inheritable, bool effective) {
    std::array<std::uint64_t, everyState + 1> named{};
    std::array<std::uint64_t, everyState + 1> unnamed{};
    for (std::size_t i = 0; i < 64; ++i) {
        unsigned state = (permitted >> i & 1U) != 0 ? isPermitted : 0U;
        state |= (inheritable >> i & 1U) != 0 ? isInheritable : 0U;
        state |= effective && state != 0 ? isEffective : 0U;
        (i < capabilityNames.size() ? named : unnamed).at(state) |= std::uint64_t{1} << i;
    }
    unsigned base = everyState;
    for (unsigned state = everyState; state-- > 0;) {
        base = std::popcount(named.at(state)) >= std::popcount(named.at(base)) ? state : base;
    }
    std::string text = base != 0 ? "=" + lettersOf(base) : std::string();
    for (unsigned state = everyState + 1; state-- > 0;) {
        if (state == base || named.at(state) == 0) {
            continue;
        }
        text += (text.empty() ? "" : " ") + namesOf(named.at(state))
                + (text.empty() ? "=" + lettersOf(state) : difference(state, base));
    }
    for (unsigned state = everyState; state > 0; --state) {
        if (unnamed.at(state) != 0) {
            text += (text.empty() ? "" : " ") + namesOf(unnamed.at(state)) + (text.empty() ? "=" : "+")
                    + lettersOf(state);
        }
    }
    return text.empty() ? "none" : text;
}

} // namespace

Outcome decodeCapabilities(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t effectiveBit = 1;
    ByteCursor cursor(subject.bytes);
    const std::uint32_t magic = cursor.u32le();
    const std::uint32_t revision = magic >> 24U;
    constexpr std::array<std::size_t, 4> sizes{0, 12, 20, 24};
    if (cursor.failed() || revision < 1 || revision > 3 || (magic & 0xFFFFFFU) > effectiveBit) {
        return misfit(0, "revision 1, 2 or 3, and no flag but \"effective\"");
    }
    if (subject.bytes.size() != sizes.at(revision)) {
        return misfit(
            4, std::to_string(sizes.at(revision)) + " bytes of revision " + std::to_string(revision));
    }
    std::uint64_t permitted = cursor.u32le();
    std::uint64_t inheritable = cursor.u32le();
    if (revision > 1) {
        permitted |= std::uint64_t{cursor.u32le()} << 32U;
        inheritable |= std::uint64_t{cursor.u32le()} << 32U;
    }
    const bool effective = (magic & effectiveBit) != 0;
    const std::string text = clauses(permitted, inheritable, effective);
    answer.text("Capabilities", text);
    answer.add("Permitted", namesOf(permitted), permitted);
    answer.add("Inheritable", namesOf(inheritable), inheritable);
    answer.yes("Effective when run", effective);
    answer.number("Revision", revision);
    if (revision == 3) {
        answer.account("Root of the user namespace", AccountKind::user, cursor.u32le());
    }
    answer.summary("Linux capabilities that the program gets when it is run: " + text + ".");
    return {};
}

} // namespace tolvane::attributes
