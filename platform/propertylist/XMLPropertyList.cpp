#include "platform/propertylist/ExpatOffset.h"
#include "platform/propertylist/PropertyListReaders.h"
#include "platform/propertylist/XMLPropertyListValues.h"

#include <algorithm>
#include <iterator>
#include <expat.h>

namespace tolvane::platform {

namespace {

enum class Kind { plist, dictionary, array, key, text, data, date, integer, real, yes, no };

struct Element {
    std::string_view name;
    Kind kind;
    std::string_view expected; ///< Where its text is none.
};

constexpr Element elements[] = {
    {"plist", Kind::plist, {}},
    {"dict", Kind::dictionary, {}},
    {"array", Kind::array, {}},
    {"key", Kind::key, {}},
    {"string", Kind::text, {}},
    {"data", Kind::data, "data in base-64"},
    {"date", Kind::date, "a date as YYYY-MM-DDTHH:MM:SSZ"},
    {"integer", Kind::integer, "a whole number of 64 bits"},
    {"real", Kind::real, "a fraction"},
    {"true", Kind::yes, {}},
    {"false", Kind::no, {}}};

/// An element whose end has not come, and what it holds so far.
struct Open {
    const Element* element = nullptr;
    std::size_t offset = 0;
    Array values = {}; ///< At most one in a `plist`.
    std::vector<Dictionary::Entry> entries = {};
    std::optional<std::string> key = std::nullopt;

    bool is(Kind kind) const { return element->kind == kind; }
    bool isContainer() const { return is(Kind::array) || is(Kind::dictionary); }
    bool holdsElements() const { return isContainer() || is(Kind::plist); }
    bool holdsText() const { return !holdsElements() && !is(Kind::yes) && !is(Kind::no); }
};

std::optional<Value> leafValue(Kind kind, std::string text) {
    switch (kind) {
    case Kind::data:
        return dataInPropertyList(text);
    case Kind::date:
        return dateInPropertyList(text);
    case Kind::integer:
        return integerInPropertyList(text);
    case Kind::real:
        return realInPropertyList(text);
    case Kind::yes:
    case Kind::no:
        return kind == Kind::yes;
    default:
        return Value(std::move(text));
    }
}

/// Builds the value while the parser goes through the text. The first fault is kept and stops the parser.
class XMLReader {
public:
    std::expected<Value, PropertyListFault> read(std::string_view text) {
        XML_SetUserData(parser_.get(), this);
        // Once stopped, the parser still calls for the end of the element that stopped it when that is empty.
        XML_SetElementHandler(
            parser_.get(),
            [](void* reader, const XML_Char* name, const XML_Char**) {
                if (!of(reader).fault_) {
                    of(reader).start(name);
                }
            },
            [](void* reader, const XML_Char*) {
                if (!of(reader).fault_) {
                    of(reader).end();
                }
            });
        XML_SetCharacterDataHandler(parser_.get(), [](void* reader, const XML_Char* characters, int length) {
            of(reader).characters({characters, static_cast<std::size_t>(length)});
        });
        // Entities are refused: those that a list declares could grow without bounds, and the parser would
        // silently drop external ones.
        XML_SetEntityDeclHandler(
            parser_.get(), [](void* reader, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                              const XML_Char*, const XML_Char*, const XML_Char*) {
                of(reader).fail(of(reader).offset(), "a document type without entities");
            });
        XML_SetSkippedEntityHandler(parser_.get(), [](void* reader, const XML_Char*, int) {
            of(reader).fail(of(reader).offset(), "an entity that XML itself declares");
        });
        const XML_Status status =
            XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), XML_TRUE);
        if (fault_) {
            return std::unexpected(*std::move(fault_));
        }
        if (status != XML_STATUS_OK || !root_) {
            const std::string_view reason = XML_ErrorString(XML_GetErrorCode(parser_.get()));
            return std::unexpected(
                PropertyListFault{offset(), "well-formed XML (" + std::string(reason) + ')'});
        }
        return *std::move(root_);
    }

private:
    static XMLReader& of(void* reader) { return *static_cast<XMLReader*>(reader); }

    void start(std::string_view name) {
        const auto* const element = std::ranges::find(elements, name, &Element::name);
        if (element == std::end(elements) || (element->kind == Kind::plist && !open_.empty())) {
            fail(offset(), "an element of property lists");
            return;
        }
        if (const std::string_view expected = expectedInsteadOf(element->kind); !expected.empty()) {
            fail(offset(), expected);
            return;
        }
        open_.push_back({.element = element, .offset = offset()});
        level_ += open_.back().isContainer() ? 1U : 0U;
        if (level_ > deepestPropertyListLevel) {
            fail(offset(), "containers at most 512 deep");
        }
    }

    void end() {
        Open ended = std::move(open_.back());
        open_.pop_back();
        level_ -= ended.isContainer() ? 1U : 0U;
        const Kind kind = ended.element->kind;
        if (ended.is(Kind::plist)) {
            if (ended.values.empty()) {
                fail(offset(), "a value");
                return;
            }
            root_ = std::move(ended.values.front());
        } else if (ended.is(Kind::array)) {
            give(std::move(ended.values), kind);
        } else if (ended.is(Kind::dictionary)) {
            if (ended.key) {
                fail(offset(), "a value for the key before");
            }
            give(Dictionary::fromEntries(std::move(ended.entries)), kind);
        } else if (auto value = leafValue(kind, std::exchange(text_, {}))) {
            give(*std::move(value), kind);
        } else {
            fail(ended.offset, ended.element->expected);
        }
    }

    void characters(std::string_view text) {
        if (!open_.empty() && open_.back().holdsText()) {
            text_ += text;
        } else if (text.find_first_not_of("\t\n\r ") != std::string_view::npos) {
            fail(offset(), "no text outside of values");
        }
    }

    void give(Value value, Kind kind) {
        if (open_.empty()) {
            root_ = std::move(value);
            return;
        }
        Open& parent = open_.back();
        if (kind == Kind::key) {
            parent.key = *value.as<std::string>();
        } else if (parent.is(Kind::dictionary)) {
            parent.entries.push_back({*std::exchange(parent.key, std::nullopt), std::move(value)});
        } else {
            parent.values.push_back(std::move(value));
        }
    }

    /// What is wrong with an element of this kind at this place; empty when nothing is.
    std::string_view expectedInsteadOf(Kind kind) const {
        const bool isKey = kind == Kind::key;
        if (open_.empty() || open_.back().is(Kind::array)) {
            return isKey ? "a value" : "";
        }
        const Open& parent = open_.back();
        if (parent.is(Kind::dictionary)) {
            return isKey == parent.key.has_value() ? (isKey ? "a value for the key before" : "a key") : "";
        }
        if (parent.is(Kind::plist)) {
            return isKey || !parent.values.empty() ? "one value alone in the list" : "";
        }
        return "no element within a value";
    }

    std::size_t offset() const { return expatOffset(parser_.get()); }

    void fail(std::size_t place, std::string_view expected) {
        if (!fault_) {
            fault_ = PropertyListFault{place, std::string(expected)};
            XML_StopParser(parser_.get(), XML_FALSE);
        }
    }

    struct ParserDeleter {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };
    std::unique_ptr<XML_ParserStruct, ParserDeleter> parser_{XML_ParserCreate(nullptr)};
    std::vector<Open> open_;
    unsigned level_ = 0;
    std::string text_;
    std::optional<Value> root_;
    std::optional<PropertyListFault> fault_;
};

} // namespace

std::expected<Value, PropertyListFault> readXMLPropertyList(std::string_view text) {
    return XMLReader().read(text);
}

} // namespace tolvane::platform
