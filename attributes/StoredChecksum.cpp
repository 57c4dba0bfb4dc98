#include "attributes/StoredChecksum.h"

#include "attributes/AttributeName.h"
#include "attributes/Decoders.h"
#include "attributes/Family.h"
#include "attributes/Parsing.h"
#include "platform/values/HexDigits.h"

#include <array>
#include <expected>
#include <utility>

namespace tolvane::attributes {

namespace {

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

std::expected<StoredChecksum, Misfit> checksumIn(std::string_view name, std::span<const std::byte> bytes) {
    const std::string_view text = trimmed(textWithoutNul(bytes));
    const bool isHex = isHexText(text);
    const std::size_t digits = isHex ? text.size() : bytes.size() * 2;
    StoredChecksum checksum{std::string(name), algorithmInName(name, digits), {}};
    const std::size_t expected = digitsOf(checksum.algorithm);
    if (checksum.algorithm.empty()) {
        return misfit(0, "a name that states the algorithm, or a digest of a usual length");
    }
    if (expected != 0 && digits != expected) {
        return misfit(
            0, std::string(checksum.algorithm) + " in " + std::to_string(expected)
                   + " digits, or half as many bytes");
    }
    if (!isHex) {
        checksum.digest.assign(bytes.begin(), bytes.end());
    }
    for (std::size_t i = 0; isHex && i + 1 < text.size(); i += 2) {
        checksum.digest.push_back(static_cast<std::byte>(
            platform::valueOfHexDigit(text[i]) * 16 + platform::valueOfHexDigit(text[i + 1])));
    }
    return checksum;
}

} // namespace

Outcome decodeChecksum(const Subject& subject, Answer& answer) {
    const auto checksum = checksumIn(subject.name, subject.bytes);
    if (!checksum) {
        return std::unexpected(checksum.error());
    }
    const std::string_view text = trimmed(textWithoutNul(subject.bytes));
    answer.text("Algorithm", checksum->algorithm);
    if (isHexText(text)) {
        answer.text("Checksum", text);
    } else {
        answer.bytes("Checksum", subject.bytes);
    }
    answer.summary(
        "Checksum of the file's content (" + std::string(checksum->algorithm)
        + ") at some time in the past; whether it still fits is not known without reading the content.");
    return {};
}

std::optional<StoredChecksum> storedChecksum(std::string_view name, std::span<const std::byte> value) {
    const AttributeName known = attributeName(name);
    const Family* const family = familyNamed(known.known);
    if (family == nullptr || family->decode != &decodeChecksum) {
        return std::nullopt;
    }
    if (known.isStream && !value.empty() && value.back() == std::byte{0}) {
        value = value.first(value.size() - 1);
    }
    auto checksum = checksumIn(known.known, value);
    if (!checksum) {
        return std::nullopt;
    }
    checksum->name = std::string(name);
    return *std::move(checksum);
}

} // namespace tolvane::attributes
