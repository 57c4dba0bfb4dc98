#include "attributes/Decoders.h"
#include "platform/values/ByteCursor.h"

#include <array>

namespace tolvane::attributes {

namespace {

constexpr std::array<Named, 6> modes{
    {{1, "AES-256-XTS"},
     {4, "AES-256-CTS"},
     {5, "AES-128-CBC"},
     {6, "AES-128-CTS"},
     {9, "Adiantum"},
     {10, "AES-256-HCTR2"}}};

} // namespace

Outcome decodeEncryptionContext(const Subject& subject, Answer& answer) {
    constexpr std::size_t nonceSize = 16;
    platform::ByteCursor cursor(subject.bytes);
    const std::uint8_t version = cursor.u8();
    if (version != 1 && version != 2) {
        return misfit(0, "version 1 or 2");
    }
    if (subject.bytes.size() != (version == 1 ? 28 : 40)) {
        return misfit(0, version == 1 ? "28 bytes" : "40 bytes");
    }
    const std::uint8_t contents = cursor.u8();
    const std::uint8_t names = cursor.u8();
    if (nameIn(modes, contents).empty() || nameIn(modes, names).empty()) {
        return misfit(1, "two modes of encryption");
    }
    const std::uint8_t flags = cursor.u8();
    answer.named("Contents", contents, modes);
    answer.named("Names", names, modes);
    answer.hex("Flags", flags, 2);
    if (version == 1) {
        answer.bytes("Key descriptor", cursor.take(8));
    } else {
        if (const std::uint8_t unit = cursor.u8(); unit != 0) {
            answer.number("Data unit, as a power of two", unit);
        }
        cursor.take(3);
        answer.bytes("Key identifier", cursor.take(16));
    }
    answer.bytes("Nonce", cursor.take(nonceSize));
    answer.number("Version", version);
    answer.summary(
        "Which key the kernel (fscrypt) encrypts the item with: contents by "
        + std::string(nameIn(modes, contents)) + ", names by " + std::string(nameIn(modes, names)) + ".");
    return {};
}

} // namespace tolvane::attributes
