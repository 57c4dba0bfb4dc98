#include "attributes/Decoders.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

struct Digest {
    std::string_view name;
    std::size_t size;
};

/// By the kernel's numbers.
constexpr std::array<Digest, 23> digests{
    {{"md4", 16},      {"md5", 16},      {"sha1", 20},    {"rmd160", 20},      {"sha256", 32},
     {"sha384", 48},   {"sha512", 64},   {"sha224", 28},  {"rmd128", 16},      {"rmd256", 32},
     {"rmd320", 40},   {"wp256", 32},    {"wp384", 48},   {"wp512", 64},       {"tgr128", 16},
     {"tgr160", 20},   {"tgr192", 24},   {"sm3", 32},     {"streebog256", 32}, {"streebog512", 64},
     {"sha3-256", 32}, {"sha3-384", 48}, {"sha3-512", 64}}};

enum Kind : std::uint8_t { oldDigest = 1, hmac = 2, signature = 3, digest = 4, portable = 5, verity = 6 };

std::string addAlgorithm(Answer& answer, std::uint8_t number) {
    const bool isKnown = number < digests.size();
    const std::string name(isKnown ? digests[number].name : "unknown");
    answer.add("Algorithm", name + " (" + std::to_string(number) + ")", std::uint64_t{number});
    return name;
}

Outcome addSignature(ByteCursor& cursor, Kind kind, Answer& answer) {
    const std::uint8_t version = cursor.u8();
    answer.number("Signature version", version);
    if (cursor.failed() || version < 2 || version > 3) {
        return misfit(1, "version 2 or 3 of a signature");
    }
    const std::string algorithm = addAlgorithm(answer, cursor.u8());
    const std::uint32_t key = cursor.u32be();
    const std::uint16_t length = cursor.u16be();
    if (cursor.failed() || cursor.remaining() != length) {
        return misfit(7, "as many bytes as the signature states");
    }
    answer.hex("Key", key, 8);
    answer.bytes("Signature", cursor.take(length));
    const std::string what = kind == portable ? "the file's attributes, portable between systems"
                             : kind == verity ? "the file's fs-verity digest"
                                              : "the file";
    answer.summary("Signature (" + algorithm + ") over " + what + "; the kernel verifies it.");
    return {};
}

Outcome addDigest(ByteCursor& cursor, Kind kind, Answer& answer) {
    std::string algorithm = "SHA-1 by its length";
    if (kind == oldDigest) {
        if (cursor.remaining() == 16) {
            algorithm = "MD5 or MD4 by its length";
        } else if (cursor.remaining() != 20) {
            return misfit(1, "16 or 20 bytes");
        }
        answer.text("Algorithm", algorithm);
    } else {
        const std::uint8_t number = cursor.u8();
        if (cursor.failed() || (number < digests.size() && cursor.remaining() != digests[number].size)) {
            return misfit(1, "an algorithm, and a digest of its length");
        }
        algorithm = addAlgorithm(answer, number);
    }
    answer.bytes("Digest", cursor.take(cursor.remaining()));
    answer.summary(
        "Digest (" + algorithm
        + ") of the file's content, which the kernel's integrity measurement compares.");
    return {};
}

} // namespace

Outcome decodeIntegrity(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint8_t number = cursor.u8();
    switch (number) {
    case oldDigest:
    case digest:
        return addDigest(cursor, static_cast<Kind>(number), answer);
    case hmac:
        if (cursor.remaining() != 20) {
            return misfit(1, "20 bytes");
        }
        answer.text("Kind", "HMAC-SHA1 with the machine's key");
        answer.bytes("HMAC", cursor.take(20));
        answer.summary(
            "Seal over the file's security attributes, made with this machine's key: an HMAC-SHA1.");
        return {};
    case signature:
    case portable:
    case verity:
        return addSignature(cursor, static_cast<Kind>(number), answer);
    default:
        return misfit(0, "a kind from 1 to 6");
    }
}

Outcome decodeRuleDigest(const Subject& subject, Answer& answer) {
    if (subject.bytes.size() != 20 && subject.bytes.size() != 32) {
        return misfit(0, "20 or 32 bytes");
    }
    answer.text("Algorithm", subject.bytes.size() == 20 ? "SHA-1" : "SHA-256");
    answer.bytes("Digest", subject.bytes);
    return {};
}

Outcome decodeEcryptfs(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t marker = 0x3C81B7F5;
    ByteCursor cursor(subject.bytes);
    const std::uint64_t size = cursor.bigEndian(8);
    const std::uint32_t random = cursor.u32be();
    if (cursor.u32be() != (random ^ marker) || cursor.failed()) {
        return misfit(8, "the marker of an eCryptfs header");
    }
    const std::uint32_t flags = cursor.u32be();
    if (cursor.failed()) {
        return misfit(16, "flags");
    }
    answer.number("Size when decrypted", size, "bytes");
    answer.number("Version", flags >> 24U);
    answer.hex("Flags", flags & 0xFFFFFFU, 6);
    answer.bytes("Key packets", cursor.take(cursor.remaining()));
    return {};
}

} // namespace tolvane::attributes
