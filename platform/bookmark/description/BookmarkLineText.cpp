#include "platform/bookmark/description/BookmarkLineText.h"

#include "platform/values/HexDigits.h"
#include "platform/values/Utf8.h"

namespace tolvane::platform {

namespace {

/// What the platform's texts call UTF-8.
constexpr std::string_view utf8Encoding = "134217984";

bool isControlOrLineEnd(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028
           || character == 0x2029;
}

char letterOfEscape(char32_t character) {
    static constexpr std::u32string_view escaped = U"\"\\\n\r\t";
    static constexpr std::string_view letters = "\"\\nrt";
    const std::size_t index = escaped.find(character);
    return index == std::u32string_view::npos ? '\0' : letters[index];
}

/// Whether an element needs no quotes between the brackets and commas of a collection.
bool standsForItself(std::string_view text) {
    return !text.empty() && text.front() != ' ' && text.back() != ' '
           && text.find_first_of("\"\\,;=(){}<>") == std::string_view::npos;
}

/// Writes records at any depth. The reader has limited the depth to 16 levels and the size of shared values.
class RecordWriter {
public:
    RecordWriter(std::string& line, const BookmarkStructure& structure)
        : line_(line)
        , structure_(structure) {}

    void append(const BookmarkRecord& record, bool isElement) {
        switch (record.type) {
        case record_type::string:
            return appendString(structure_.text(record), isElement);
        case record_type::data:
            return appendAngleBytes(line_, structure_.payload(record));
        case record_type::array:
            return appendArray(record);
        case record_type::dictionary:
            return appendDictionary(record);
        case record_type::absoluteURL:
        case record_type::relativeURL:
            return appendURL(record);
        default:
            return appendOther(record);
        }
    }

private:
    void appendString(std::string_view text, bool isElement) {
        if (!isElement || standsForItself(text)) {
            appendEscaped(line_, text);
            return;
        }
        std::string quoted = "\"";
        for (const char c : text) {
            if (c == '"' || c == '\\') {
                quoted += '\\';
            }
            quoted += c;
        }
        appendEscaped(line_, quoted + "\"");
    }

    void appendArray(const BookmarkRecord& record) {
        line_ += "(";
        for (std::size_t i = 0; i < record.length / 4; ++i) {
            line_ += i == 0 ? " " : ", ";
            appendAt(structure_.word(record, i));
        }
        line_ += " )";
    }

    void appendDictionary(const BookmarkRecord& record) {
        line_ += "{";
        for (std::size_t i = 0; i + 1 < record.length / 4; i += 2) {
            line_ += i == 0 ? " " : "; ";
            appendAt(structure_.word(record, i));
            line_ += " = ";
            appendAt(structure_.word(record, i + 1));
        }
        line_ += " }";
    }

    void appendURL(const BookmarkRecord& record) {
        const bool isRelative = record.type == record_type::relativeURL;
        const BookmarkRecord* const part =
            isRelative ? structure_.record(structure_.word(record, 1)) : &record;
        line_ += "{string = ";
        if (part != nullptr) {
            appendEscaped(line_, structure_.text(*part));
        }
        line_.append(", encoding = ").append(utf8Encoding).append(", base = ");
        if (isRelative) {
            appendAt(structure_.word(record, 0));
        } else {
            line_ += "(null)";
        }
        line_ += "}";
    }

    void appendOther(const BookmarkRecord& record) {
        const Value value = bookmarkValue(structure_, record);
        if (value.as<Dictionary>() == nullptr) {
            line_ += description(value);
            return;
        }
        line_ += "type ";
        appendHexadecimal(line_, record.type);
        line_ += ' ';
        appendAngleBytes(line_, structure_.payload(record));
    }

    void appendAt(std::uint32_t offset) {
        if (const BookmarkRecord* const record = structure_.record(offset)) {
            append(*record, true);
        }
    }

    std::string& line_;
    const BookmarkStructure& structure_;
};

} // namespace

void appendHexadecimal(std::string& line, std::uint64_t number) {
    appendHex(line += "0x", number, 1);
}

void appendFlags(std::string& line, const BookmarkFlags& flags) {
    line += "{ flags=";
    appendHexadecimal(line, flags.values);
    line += " valid=";
    appendHexadecimal(line, flags.valid);
    line += " requested=";
    appendHexadecimal(line, flags.requested);
    line += " }";
}

void appendEscaped(std::string& line, std::string_view text) {
    while (!text.empty()) {
        const DecodedCharacter character = decodeFirstCharacter(text);
        if (const char letter = letterOfEscape(character.codePoint)) {
            line += {'\\', letter};
        } else if (isControlOrLineEnd(character.codePoint)) {
            appendHex(line += "\\U", character.codePoint, 4);
        } else {
            appendUtf8(line, character.codePoint);
        }
        text.remove_prefix(character.length);
    }
}

void appendRecord(std::string& line, const BookmarkStructure& structure, const BookmarkRecord& record) {
    RecordWriter(line, structure).append(record, false);
}

} // namespace tolvane::platform
