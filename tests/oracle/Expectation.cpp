#include "tests/oracle/Expectation.h"

#include "platform/values/Base64.h"

#include <unicode/unistr.h>

#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <utility>
#include <sys/stat.h>

namespace tolvane::tests {

namespace {

constexpr std::string_view resourceFork = "user.com.apple.ResourceFork";

std::string digits(std::uint64_t number, int base, std::size_t width = 1) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, base).ptr;
    const std::string text(buffer.data(), end);
    return std::string(width > text.size() ? width - text.size() : 0, '0') + text;
}

bool hasForks(const ItemFacts& facts) {
    return S_ISREG(facts.mode) || S_ISLNK(facts.mode);
}

std::uint64_t urlDataSize(const ItemFacts& facts) {
    return hasForks(facts) ? facts.size : 0;
}

// A link has no attributes of a user's; what is known of its attributes are its target's.
std::uint64_t resourceForkSize(const ItemFacts& facts) {
    if (!S_ISREG(facts.mode) || !facts.attributes) {
        return 0;
    }
    const auto fork = facts.attributes->find(std::string(resourceFork));
    return fork == facts.attributes->end() ? 0 : fork->second.size();
}

std::uint64_t attributesSize(const ItemFacts& facts) {
    std::uint64_t sum = 0;
    for (const auto& [name, value] : *facts.attributes) {
        sum += value.size();
    }
    return sum;
}

// A name inside a property list in the old style.
std::string quoted(const icu::UnicodeString& name) {
    std::string text;
    bool isPlain = !name.isEmpty();
    for (std::int32_t i = 0; i < name.length(); ++i) {
        const char16_t unit = name[i];
        const bool isLetterOrDigit =
            (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') || (unit >= '0' && unit <= '9');
        isPlain = isPlain && isLetterOrDigit;
        constexpr std::string_view controls = "\a\b\t\n\v\f\r";
        if (unit >= 0x80) {
            text += "\\U" + digits(unit, 16, 4);
        } else if (const auto letter = controls.find(static_cast<char>(unit));
                   letter != std::string_view::npos) {
            text += std::string("\\") + "abtnvfr"[letter];
        } else if (unit < 0x20 || unit == 0x7F) {
            text += "\\" + digits(unit, 8, 3);
        } else if (unit == '"' || unit == '\\') {
            text += std::string("\\") + static_cast<char>(unit);
        } else {
            text += static_cast<char>(unit);
        }
    }
    return isPlain ? text : "\"" + text + "\"";
}

std::string groupedHex(const std::string& bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        text += (i == 0 ? "" : " ") + hexText(bytes.substr(i, 4));
    }
    return "<" + text + ">";
}

std::string attributesText(const std::map<std::string, std::string>& attributes) {
    if (attributes.empty()) {
        return {};
    }
    // Sorted by UTF-16 code units, which is how the strings of ICU compare.
    std::map<icu::UnicodeString, std::string> sorted;
    for (const auto& [name, value] : attributes) {
        sorted.emplace(icu::UnicodeString::fromUTF8(name), value);
    }
    std::string text = "NSFileExtendedAttributes : {\n";
    for (const auto& [name, value] : sorted) {
        text += "    " + quoted(name) + " = " + groupedHex(value) + ";\n";
    }
    return text + "}\n";
}

// "2024-08-09 18:27:02.123456789 +0000" without its fraction.
std::string dateText(const std::string& date) {
    return date.empty() ? "" : date.substr(0, date.find('.')) + " +0000";
}

nlohmann::json isoDate(const std::string& date) {
    if (date.empty()) {
        return nullptr;
    }
    std::string text = date.substr(0, date.rfind(' ')) + "Z";
    text[text.find(' ')] = 'T';
    return text;
}

// "NSFileTypeRegular" and so on for a mode as st_mode has it.
std::string fileTypeText(std::uint64_t mode) {
    static const std::map<std::uint64_t, std::string> texts{
        {S_IFREG, "NSFileTypeRegular"},          {S_IFDIR, "NSFileTypeDirectory"},
        {S_IFLNK, "NSFileTypeSymbolicLink"},     {S_IFSOCK, "NSFileTypeSocket"},
        {S_IFCHR, "NSFileTypeCharacterSpecial"}, {S_IFBLK, "NSFileTypeBlockSpecial"}};
    const auto text = texts.find(mode & S_IFMT);
    return text == texts.end() ? "NSFileTypeUnknown" : text->second;
}

} // namespace

std::string hexText(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        text += digits(static_cast<unsigned char>(byte), 16, 2);
    }
    return text;
}

Fields expectedFields(const std::string& path, const ItemFacts& facts) {
    const auto urlData = urlDataSize(facts);
    const auto fork = resourceForkSize(facts);
    Fields fields{
        {"pathTextbox", readableText(path)},
        {"frURLTextbox",
         "file:///.file/id=" + std::to_string(facts.device) + "." + std::to_string(facts.inode)},
        {"urlDataSize", std::to_string(urlData)},
        {"urlXattrSize", std::to_string(fork)},
        {"urlTotalSize", std::to_string(urlData + fork)},
        {"filemanSize", "0"},
        {"xattrSize", "0"},
        {"filemanTotalSize", "0"}};
    for (const char* const name : dictionaryFields) {
        fields[name] = "";
    }
    if (!facts.attributes) {
        return fields;
    }
    if (facts.device != 0 && facts.inode != 0) {
        fields["volfsPathTextbox"] =
            "/.vol/" + std::to_string(facts.device) + "/" + std::to_string(facts.inode);
    }
    fields["filemanSize"] = std::to_string(facts.size);
    fields["xattrSize"] = std::to_string(attributesSize(facts));
    fields["filemanTotalSize"] = std::to_string(facts.size + attributesSize(facts));
    fields["permsTextbox"] = digits(facts.mode & 07777U, 8);
    fields["ownerNameTextbox"] = facts.userName;
    fields["ownerIDTextbox"] = std::to_string(facts.user);
    fields["groupNameTextbox"] = facts.groupName;
    fields["groupIDTextbox"] = std::to_string(facts.group);
    fields["createdTextbox"] = dateText(facts.created);
    fields["modifiedTextbox"] = dateText(facts.modified);
    fields["typeTextbox"] = fileTypeText(facts.mode);
    fields["refCountTextbox"] = std::to_string(facts.links);
    fields["inodeText"] = attributesText(*facts.attributes);
    return fields;
}

nlohmann::json expectedFacts(const std::string& path, const ItemFacts& facts) {
    const bool known = facts.attributes.has_value();
    const auto ifKnown = [known](const nlohmann::json& value) { return known ? value : nlohmann::json(); };
    nlohmann::json attributes = known ? nlohmann::json::object() : nlohmann::json();
    if (known) {
        for (const auto& [name, value] : *facts.attributes) {
            attributes[name] = hexText(value);
        }
    }
    const bool isText = readableText(path) == path;
    return {
        {"path", readableText(path)},
        {"pathBytes", isText ? nlohmann::json() : nlohmann::json(hexText(path))},
        {"urlTotalSize", urlDataSize(facts) + resourceForkSize(facts)},
        {"urlDataSize", urlDataSize(facts)},
        {"xattrSize", known ? attributesSize(facts) : 0},
        {"filemanSize", known ? facts.size : 0},
        {"device", ifKnown(facts.device)},
        {"inode", ifKnown(facts.inode)},
        {"permissions", ifKnown(facts.mode & 07777U)},
        {"ownerID", ifKnown(facts.user)},
        {"groupID", ifKnown(facts.group)},
        {"linkCount", ifKnown(facts.links)},
        {"fileType", ifKnown(fileTypeText(facts.mode))},
        {"created", ifKnown(isoDate(facts.created))},
        {"modified", ifKnown(isoDate(facts.modified))},
        {"extendedAttributes", attributes}};
}

nlohmann::json factsToldByTexts(const std::string& path, const Fields& texts) {
    const auto unless = [](bool absent, const std::string& text) {
        return absent ? nlohmann::json() : nlohmann::json(text);
    };
    const std::string& type = texts.at("typeTextbox");
    const std::string identifier = type.empty() ? type : type.substr(type.find(": ") + 2);
    const auto bytes = platform::base64DecodedData(texts.at("bookmarkTextbox"));
    const std::string bookmark =
        bytes ? std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size()) : "";
    const std::string& resolved = texts.at("bookmarkPathTextbox");
    return {
        {"title", headingOf(path).title},
        {"typeIdentifier", unless(identifier.empty() || identifier == "N/A", identifier)},
        {"bookmark", unless(bookmark.empty(), hexText(bookmark))},
        {"bookmarkPath", unless(resolved.starts_with("(couldn't"), resolved)}};
}

Fields comparable(Fields fields) {
    fields.erase("windowTitle");
    fields.erase("date");
    fields.erase("bookmarkTextbox");
    std::string& type = fields["typeTextbox"];
    if (const auto colon = type.find(": "); colon != std::string::npos && colon + 2 < type.size()) {
        type.resize(colon);
    }
    return fields;
}

} // namespace tolvane::tests
