#include "attributes/Decoders.h"
#include "attributes/Parsing.h"
#include "platform/values/ByteCursor.h"

#include <algorithm>
#include <array>

namespace tolvane::attributes {

namespace {

using platform::ByteCursor;

constexpr std::array<Named, 13> compressionTypes{
    {{1, "not compressed, stored here"},
     {3, "zlib, stored here"},
     {4, "zlib, in the resource fork"},
     {5, "content elsewhere, or shared"},
     {7, "LZVN, stored here"},
     {8, "LZVN, in the resource fork"},
     {9, "not compressed, stored here"},
     {10, "not compressed, in the resource fork"},
     {11, "LZFSE, stored here"},
     {12, "LZFSE, in the resource fork"},
     {13, "LZBITMAP, stored here"},
     {14, "LZBITMAP, in the resource fork"},
     {0x80000001, "content is fetched when read"}}};

constexpr std::array<Named, 4> signatureKinds{
    {{0xFADE0C02, "code directory"},
     {0xFADE0B01, "signature"},
     {0xFADE0C01, "requirements"},
     {0xFADE7171, "entitlements"}}};

} // namespace

Outcome decodeLastUsedDate(const Subject& subject, Answer& answer) {
    constexpr std::uint64_t perSecond = 1'000'000'000;
    ByteCursor cursor(subject.bytes);
    const auto seconds = static_cast<std::int64_t>(cursor.u64le());
    const std::uint64_t nanoseconds = cursor.u64le();
    if (cursor.failed() || cursor.remaining() != 0) {
        return misfit(0, "16 bytes: seconds and nanoseconds");
    }
    if (nanoseconds >= perSecond) {
        return misfit(8, "nanoseconds below a second");
    }
    const platform::Date date =
        platform::Date::fromUnixTime(seconds, static_cast<std::uint32_t>(nanoseconds));
    answer.date("Last used", date);
    answer.summary("macOS: the item was last opened by a user on " + dateText(date) + ".");
    return {};
}

Outcome decodeProvenance(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const auto prefix = cursor.take(3);
    const std::uint64_t key = cursor.u64le();
    if (cursor.failed()) {
        return misfit(0, "11 bytes");
    }
    const auto padding = cursor.take(cursor.remaining());
    if (!std::ranges::all_of(padding, [](std::byte byte) { return byte == std::byte{0}; })) {
        return misfit(11, "no more bytes but zeros");
    }
    answer.add("Application", hexNumber(key, 16), key);
    answer.bytes("Prefix", prefix);
    if (!padding.empty()) {
        answer.note(std::to_string(padding.size()) + " zero bytes at the end");
    }
    return {};
}

Outcome decodeAllowedApplications(const Subject& subject, Answer& answer) {
    constexpr std::size_t slotSize = 18;
    constexpr std::size_t slots = 4;
    if (subject.bytes.size() != slotSize * slots) {
        return misfit(0, "72 bytes");
    }
    std::size_t used = 0;
    for (std::size_t i = 0; i < slots; ++i) {
        const auto slot = subject.bytes.subspan(i * slotSize, slotSize);
        if (std::ranges::all_of(slot, [](std::byte byte) { return byte == std::byte{0}; })) {
            continue;
        }
        platform::UUID uuid;
        std::ranges::copy(slot.subspan(2), uuid.bytes.begin());
        answer.add("Allowed application", uuid.text() + ", mark " + hexDigits(slot.first(2)), uuid);
        ++used;
    }
    answer.summary(
        "macOS: applications that the user let open this file, although their sandbox does not; "
        + std::to_string(used) + (used == 1 ? " of 4 slots is" : " of 4 slots are")
        + " used, and the identifiers mean something on that Mac only.");
    return {};
}

Outcome decodeCompressedFile(const Subject& subject, Answer& answer) {
    constexpr std::uint32_t magic = 0x636D7066;
    ByteCursor cursor(subject.bytes);
    const std::uint32_t found = cursor.u32le();
    const std::uint32_t type = cursor.u32le();
    const std::uint64_t size = cursor.u64le();
    if (found != magic) {
        return misfit(0, "the letters fpmc");
    }
    if (cursor.failed()) {
        return misfit(4, "a type and a size");
    }
    answer.named("Compression", type, compressionTypes);
    if (subject.questions.itemKind == platform::ItemKind::folder) {
        constexpr unsigned sizeBits = 40;
        answer.number("Uncompressed size", size & ((std::uint64_t{1} << sizeBits) - 1), "bytes");
        answer.number("Children", size >> sizeBits);
    } else {
        answer.number("Uncompressed size", size, "bytes");
    }
    if (cursor.remaining() > 0) {
        answer.number("Stored here", cursor.remaining(), "bytes");
    }
    const std::string_view name = nameIn(compressionTypes, type);
    answer.summary(
        "macOS keeps the file compressed: " + std::string(name.empty() ? "unknown type" : name) + ", "
        + std::to_string(size) + " bytes when read.");
    return {};
}

Outcome decodeCodeSignature(const Subject& subject, Answer& answer) {
    ByteCursor cursor(subject.bytes);
    const std::uint32_t magic = cursor.u32be();
    const std::uint32_t length = cursor.u32be();
    const std::string_view kind = nameIn(signatureKinds, magic);
    if (cursor.failed() || kind.empty()) {
        return misfit(0, "the magic number of a part of a code signature");
    }
    if (length != subject.bytes.size()) {
        return misfit(4, "the value's length");
    }
    answer.add("Part", std::string(kind) + " (" + hexNumber(magic, 8) + ")", std::uint64_t{magic});
    answer.number("Length", length, "bytes");
    if (magic == 0xFADE7171 && isText(textOf(subject.bytes.subspan(8)))) {
        answer.text("Entitlements", textOf(subject.bytes.subspan(8)));
    }
    return {};
}

Outcome decodeDiskImageChecksum(const Subject& subject, Answer& answer) {
    const std::string_view text = textWithoutNul(subject.bytes);
    // "i:INODE on VOLUME @ TIME - CRC32:$HEX"
    const std::vector<std::string_view> words = piecesOf(text, ' ');
    if (words.size() != 7 || !words[0].starts_with("i:") || words[1] != "on" || words[3] != "@"
        || words[5] != "-") {
        return misfit(0, "\"i:NUMBER on VOLUME @ TIME - CRC32:$HEX\"");
    }
    const auto inode = parsedNumber<std::uint64_t>(words[0].substr(2));
    const auto time = parsedNumber<std::uint32_t>(words[4]);
    const std::size_t mark = words[6].find(":$");
    if (!inode || !time || mark == std::string_view::npos) {
        return misfit(0, "\"i:NUMBER on VOLUME @ TIME - CRC32:$HEX\"");
    }
    const platform::Date date = platform::Date::fromUnixTime(*time, 0);
    answer.date("Checked", date);
    answer.text("Algorithm", words[6].substr(0, mark));
    answer.text("Checksum", words[6].substr(mark + 2));
    answer.number("File number", *inode);
    answer.text("Volume", words[2]);
    answer.summary("macOS checked this disk image on " + dateText(date) + " and noted its checksum.");
    return {};
}

Outcome decodeTextEncoding(const Subject& subject, Answer& answer) {
    static constexpr std::array<Named, 27> encodings{
        {{0, "Mac Roman"},         {0x100, "UTF-16"},       {0x500, "Windows-1252"},
         {0x501, "Windows-1250"},  {0x502, "Windows-1251"}, {0x503, "Windows-1253"},
         {0x504, "Windows-1254"},  {0x600, "ASCII"},        {0xBFF, "non-lossy ASCII"},
         {0x420, "CP932"},         {0x421, "CP936"},        {0x422, "CP949"},
         {0x423, "CP950"},         {0x631, "GBK"},          {0x632, "GB 18030"},
         {0x820, "ISO-2022-JP"},   {0x920, "EUC-JP"},       {0x930, "EUC-CN"},
         {0x940, "EUC-KR"},        {0xA01, "Shift-JIS"},    {0xA02, "KOI8-R"},
         {0xA03, "Big5"},          {0x08000100, "UTF-8"},   {0x10000100, "UTF-16BE"},
         {0x14000100, "UTF-16LE"}, {0x0C000100, "UTF-32"},  {0x18000100, "UTF-32BE"}}};
    const std::string_view text = textWithoutNul(subject.bytes);
    const std::vector<std::string_view> parts = piecesOf(text, ';');
    if (parts.size() > 2 || !isText(text)) {
        return misfit(0, "\"name;number\"");
    }
    std::string name(parts[0]);
    if (!name.empty()) {
        answer.text("Name", name);
    }
    if (parts.size() == 2 && !parts[1].empty()) {
        const auto number = parsedNumber<std::uint32_t>(parts[1]);
        if (!number) {
            return misfit(parts[0].size() + 1, "a decimal number");
        }
        std::string known(nameIn(encodings, *number));
        if (*number > 0x200 && *number <= 0x210) {
            known = "ISO 8859-" + std::to_string(*number - 0x200);
        } else if (*number == 0x1C000100) {
            known = "UTF-32LE";
        }
        answer.add(
            "Number", (known.empty() ? std::string("unknown") : known) + " (" + hexNumber(*number) + ")",
            std::uint64_t{*number});
        name = known.empty() ? name : known;
    }
    answer.summary(
        "The encoding in which an editor of macOS saved the text: "
        + (name.empty() ? "not stated" : shortened(name)) + ".");
    return {};
}

} // namespace tolvane::attributes
