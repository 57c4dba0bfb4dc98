#include "platform/bookmark/description/AliasDescription.h"

#include "platform/bookmark/description/BookmarkLineText.h"
#include "platform/values/Description.h"

namespace tolvane::platform {

namespace {

void appendQuoted(std::string& text, std::string_view label, std::string_view value) {
    text.append(label).append(":\"");
    appendEscaped(text, value);
    text += '"';
}

void appendNumber(std::string& text, std::string_view label, std::uint64_t number) {
    text.append(label).append("=");
    appendHexadecimal(text, number);
}

void appendOptional(std::string& text, std::string_view label, const std::optional<std::uint32_t>& number) {
    appendQuoted(text, label, number ? std::to_string(*number) : "");
}

/// Two letters, such as "H+"; other codes as their number.
std::string fileSystemText(std::uint16_t code) {
    std::string letters{static_cast<char>(code >> 8U), static_cast<char>(code)};
    for (const char letter : letters) {
        if (letter < 0x20 || letter > 0x7E) {
            std::string number;
            appendHexadecimal(number, code);
            return number;
        }
    }
    return letters;
}

std::string valueText(const Value& value) {
    if (const auto* const text = value.as<std::string>()) {
        return *text;
    }
    if (const auto* const numbers = value.as<Array>()) {
        std::string text = "(";
        for (std::size_t i = 0; i < numbers->size(); ++i) {
            text += (i == 0 ? " " : ", ") + description((*numbers)[i]);
        }
        return text + " )";
    }
    return description(value);
}

void appendItem(std::string& text, std::size_t number, const AliasItem& item) {
    text.append("\n").append(std::to_string(number)).append(") ");
    appendNumber(text, "tag", item.tag);
    appendNumber(text, " offset", item.offset);
    text.append(" ").append(aliasTagName(item.tag)).append(":\"");
    if (const auto value = aliasItemValue(item)) {
        appendEscaped(text, valueText(*value));
    } else {
        appendAngleBytes(text, item.bytes);
    }
    text += '"';
}

} // namespace

std::string aliasDateText(const AliasDate& date) {
    std::string text;
    if (date.local) {
        const std::string local = date.local->description();
        text = local.substr(0, local.rfind(" +")) + " local time";
    }
    if (date.utc) {
        text += (text.empty() ? "" : ", ") + date.utc->description();
    }
    return text;
}

void appendAliasDescription(std::string& text, const AliasRecord& record) {
    text += "\nAlias record: " + std::to_string(record.length) + " bytes, version "
            + std::to_string(record.version) + (record.isFolder ? ", folder" : ", file");
    appendNumber(text, ", applicationInfo", record.applicationInfo);
    appendQuoted(text, "\nvolume", record.volumeName);
    appendQuoted(text, " created", aliasDateText(record.volumeCreationDate));
    appendQuoted(text, " fileSystem", fileSystemText(record.fileSystem));
    appendNumber(text, " diskType", record.diskType);
    appendNumber(text, " flags", record.volumeFlags);
    appendQuoted(text, "\nitem", record.fileName);
    appendQuoted(text, " created", aliasDateText(record.creationDate));
    appendOptional(text, " number", record.fileNumber);
    appendOptional(text, " parentNumber", record.parentNumber);
    for (std::size_t i = 0; i < record.items.size(); ++i) {
        appendItem(text, i, record.items[i]);
    }
    for (const BookmarkWarning& warning : record.warnings) {
        text += "\nWarning at ";
        appendHexadecimal(text, warning.offset);
        text.append(" of the alias record: ").append(warning.text);
    }
    for (const AliasRecord& image : record.diskImage) {
        text += "\nThe volume's disk image:";
        appendAliasDescription(text, image);
    }
}

} // namespace tolvane::platform
