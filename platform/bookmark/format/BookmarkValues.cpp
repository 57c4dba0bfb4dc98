#include "platform/bookmark/format/BookmarkValues.h"

#include "platform/values/ByteCursor.h"

namespace tolvane::platform {

namespace {

constexpr std::size_t wordLength = 4;

Value valueAt(const BookmarkStructure& structure, std::uint32_t offset) {
    const BookmarkRecord* const record = structure.record(offset);
    return record == nullptr ? Value() : bookmarkValue(structure, *record);
}

/// Codes of numbers that are fractions: the two widths, and their other names.
bool isFraction(std::uint32_t type) {
    constexpr std::uint32_t otherNames[] = {0x030C, 0x030D, 0x0310};
    return type == record_type::float32 || type == record_type::float64
           || std::ranges::find(otherNames, type) != std::end(otherNames);
}

bool isNumber(std::uint32_t type) {
    return (type & ~0xFFU) == record_type::numberClass;
}

/// The integer in a record; nothing for fractions and other types.
std::optional<std::int64_t> integerIn(const BookmarkStructure& structure, const BookmarkRecord& record) {
    const std::size_t bits = 8 * std::size_t{record.length};
    const bool isInteger = isNumber(record.type) && !isFraction(record.type)
                           && (bits == 8 || bits == 16 || bits == 32 || bits == 64);
    if (!isInteger) {
        return std::nullopt;
    }
    const std::uint64_t number = ByteCursor(structure.payload(record)).littleEndian(record.length);
    return static_cast<std::int64_t>(number << (64 - bits)) >> (64 - bits);
}

std::optional<Value> numberValue(ByteCursor bytes, std::uint32_t type) {
    const std::size_t width = bytes.remaining();
    if (isFraction(type) && width == 4) {
        return Value(std::bit_cast<float>(bytes.u32le()));
    }
    if (isFraction(type) && width == 8) {
        return Value(std::bit_cast<double>(bytes.u64le()));
    }
    switch (isFraction(type) ? 0 : width) {
    case 1:
        return Value(static_cast<std::int8_t>(bytes.littleEndian(1)));
    case 2:
        return Value(static_cast<std::int16_t>(bytes.littleEndian(2)));
    case 4:
        return Value(static_cast<std::int32_t>(bytes.littleEndian(4)));
    case 8:
        return Value(static_cast<std::int64_t>(bytes.littleEndian(8)));
    default:
        return std::nullopt;
    }
}

Value urlValue(std::string text) {
    if (std::optional<URL> url = URL::fromText(text)) {
        return std::move(*url);
    }
    return text;
}

Value arrayValue(const BookmarkStructure& structure, const BookmarkRecord& record) {
    Array array;
    array.reserve(record.length / wordLength);
    for (std::size_t i = 0; i < record.length / wordLength; ++i) {
        array.push_back(valueAt(structure, structure.word(record, i)));
    }
    return array;
}

Value dictionaryValue(const BookmarkStructure& structure, const BookmarkRecord& record) {
    std::vector<Dictionary::Entry> entries;
    entries.reserve(record.length / (2 * wordLength));
    for (std::size_t i = 0; i + 1 < record.length / wordLength; i += 2) {
        const BookmarkRecord* const key = structure.record(structure.word(record, i));
        if (key != nullptr) {
            entries.push_back(
                {std::string(structure.text(*key)), valueAt(structure, structure.word(record, i + 1))});
        }
    }
    return Dictionary::fromEntries(std::move(entries));
}

/// The value of a record whose type is known and has this length.
std::optional<Value> knownValue(const BookmarkStructure& structure, const BookmarkRecord& record) {
    ByteCursor bytes(structure.payload(record));
    switch (record.type) {
    case record_type::string:
        return Value(structure.text(record));
    case record_type::data: {
        const auto payload = structure.payload(record);
        return Value(Data(payload.begin(), payload.end()));
    }
    case record_type::date:
        return record.length == 8 ? std::optional(Value(Date(std::bit_cast<double>(bytes.bigEndian(8)))))
                                  : std::nullopt;
    case record_type::booleanFalse:
    case record_type::booleanTrue:
        return Value(record.type == record_type::booleanTrue);
    case record_type::array:
        return arrayValue(structure, record);
    case record_type::dictionary:
        return dictionaryValue(structure, record);
    case record_type::uuid: {
        UUID uuid;
        if (record.length != uuid.bytes.size()) {
            return std::nullopt;
        }
        std::ranges::copy(structure.payload(record), uuid.bytes.begin());
        return Value(uuid);
    }
    case record_type::absoluteURL:
        return urlValue(bookmarkURLText(structure, record));
    case record_type::relativeURL:
        return Value(bookmarkURLText(structure, record));
    case record_type::null:
        return Value();
    default:
        return isNumber(record.type) ? numberValue(bytes, record.type) : std::nullopt;
    }
}

} // namespace

Value bookmarkValue(const BookmarkStructure& structure, const BookmarkRecord& record) {
    if (std::optional<Value> known = knownValue(structure, record)) {
        return std::move(*known);
    }
    const auto payload = structure.payload(record);
    return Dictionary{{"type", record.type}, {"bytes", Data(payload.begin(), payload.end())}};
}

std::string bookmarkURLText(const BookmarkStructure& structure, const BookmarkRecord& record) {
    if (record.type != record_type::relativeURL) {
        return std::string(structure.text(record));
    }
    const BookmarkRecord* const base = structure.record(structure.word(record, 0));
    const BookmarkRecord* const part = structure.record(structure.word(record, 1));
    if (base == nullptr || part == nullptr) {
        return {};
    }
    return std::string(structure.text(*part)) + " -- " + bookmarkURLText(structure, *base);
}

std::optional<BookmarkFlags> bookmarkFlags(const BookmarkStructure& structure, const BookmarkRecord& record) {
    if (record.type != record_type::data || record.length != 24) {
        return std::nullopt;
    }
    ByteCursor cursor(structure.payload(record));
    BookmarkFlags flags;
    flags.values = cursor.u64le();
    flags.valid = cursor.u64le();
    flags.requested = cursor.u64le();
    return flags;
}

const BookmarkRecord* BookmarkItems::record(std::uint32_t key) const {
    const BookmarkItem* const item = table_ == nullptr ? nullptr : table_->find(key);
    return item == nullptr ? nullptr : structure_->record(item->valueOffset);
}

std::optional<Value> BookmarkItems::value(std::uint32_t key) const {
    const BookmarkRecord* const found = record(key);
    return found == nullptr ? std::nullopt : std::optional(bookmarkValue(*structure_, *found));
}

template <typename Kind>
std::optional<Kind> BookmarkItems::valueOf(std::uint32_t key) const {
    const std::optional<Value> found = value(key);
    const Kind* const kind = found ? found->as<Kind>() : nullptr;
    return kind == nullptr ? std::nullopt : std::optional(*kind);
}

std::optional<std::string> BookmarkItems::textOfType(std::uint32_t key, std::uint32_t type) const {
    const BookmarkRecord* const found = record(key);
    return found == nullptr || found->type != type ? std::nullopt
                                                   : std::optional<std::string>(structure_->text(*found));
}

std::optional<std::int64_t> BookmarkItems::integer(std::uint32_t key) const {
    const BookmarkRecord* const found = record(key);
    return found == nullptr ? std::nullopt : integerIn(*structure_, *found);
}

std::optional<bool> BookmarkItems::boolean(std::uint32_t key) const {
    return valueOf<bool>(key);
}

std::optional<Date> BookmarkItems::date(std::uint32_t key) const {
    return valueOf<Date>(key);
}

std::optional<BookmarkFlags> BookmarkItems::flags(std::uint32_t key) const {
    const BookmarkRecord* const found = record(key);
    return found == nullptr ? std::nullopt : bookmarkFlags(*structure_, *found);
}

std::optional<std::vector<std::string>> BookmarkItems::strings(std::uint32_t key) const {
    const BookmarkRecord* const array = record(key);
    if (array == nullptr || array->type != record_type::array) {
        return std::nullopt;
    }
    std::vector<std::string> texts;
    texts.reserve(array->length / wordLength);
    for (std::size_t i = 0; i < array->length / wordLength; ++i) {
        const BookmarkRecord* const element = structure_->record(structure_->word(*array, i));
        if (element == nullptr || element->type != record_type::string) {
            return std::nullopt;
        }
        texts.emplace_back(structure_->text(*element));
    }
    return texts;
}

std::optional<std::vector<std::optional<std::int64_t>>> BookmarkItems::integers(std::uint32_t key) const {
    const BookmarkRecord* const array = record(key);
    if (array == nullptr || array->type != record_type::array) {
        return std::nullopt;
    }
    std::vector<std::optional<std::int64_t>> numbers;
    numbers.reserve(array->length / wordLength);
    for (std::size_t i = 0; i < array->length / wordLength; ++i) {
        const BookmarkRecord* const element = structure_->record(structure_->word(*array, i));
        numbers.push_back(element == nullptr ? std::nullopt : integerIn(*structure_, *element));
        if (!numbers.back() && (element == nullptr || element->type != record_type::null)) {
            return std::nullopt;
        }
    }
    return numbers;
}

} // namespace tolvane::platform
