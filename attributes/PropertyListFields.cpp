#include "attributes/PropertyListFields.h"

#include "attributes/Decoders.h"
#include "attributes/Guess.h"
#include "platform/propertylist/PropertyList.h"

#include <type_traits>

namespace tolvane::attributes {

namespace {

using platform::Value;

std::string below(std::string_view name, std::string_view key) {
    return name.empty() ? std::string(key) : std::string(name) + " › " + std::string(key);
}

class ListFields {
public:
    ListFields(const Subject& subject, Answer& answer) : subject_(subject), answer_(answer) {}

    void add(const Value& value, const std::string& name, unsigned level) {
        if (level > deepestListLevel) {
            answer_.note(
                name.substr(0, 80) + "… lies deeper than " + std::to_string(deepestListLevel) + " levels");
            return;
        }
        std::visit(
            [&](const auto& kind) { addKind(kind, name.empty() ? "Value" : name, name, level); },
            value.storage());
    }

private:
    template <typename Kind>
    void addKind(const Kind& kind, const std::string& shown, const std::string& name, unsigned level) {
        if constexpr (std::is_same_v<Kind, platform::Null>) {
            answer_.add(shown, "null", kind);
        } else if constexpr (std::is_same_v<Kind, bool>) {
            answer_.yes(shown, kind);
        } else if constexpr (std::is_integral_v<Kind>) {
            answer_.add(shown, std::to_string(kind), kind);
        } else if constexpr (std::is_floating_point_v<Kind>) {
            answer_.add(shown, std::to_string(kind), kind);
        } else if constexpr (std::is_same_v<Kind, std::string>) {
            answer_.text(shown, kind);
        } else if constexpr (std::is_same_v<Kind, platform::Date>) {
            answer_.add(shown, dateTextOfDouble(kind), kind);
        } else if constexpr (std::is_same_v<Kind, platform::Data>) {
            addData(kind, shown);
        } else if constexpr (std::is_same_v<Kind, platform::Array>) {
            if (kind.empty()) {
                answer_.add(shown, "none", kind);
            }
            for (const Value& element : kind) {
                add(element, name.empty() ? "Item" : name, level + 1);
            }
        } else if constexpr (std::is_same_v<Kind, platform::Dictionary>) {
            if (kind.empty()) {
                answer_.add(shown, "none", kind);
            }
            for (const platform::Dictionary::Entry& entry : kind) {
                add(entry.value, below(name, entry.key), level + 1);
            }
        } else if constexpr (std::is_same_v<Kind, platform::URL>) {
            answer_.text(shown, kind.absoluteString());
        } else {
            static_assert(std::is_same_v<Kind, platform::UUID>);
            answer_.add(shown, kind.text(), kind);
        }
    }

    void addData(const platform::Data& data, const std::string& shown) {
        if (subject_.depth < deepestValue && isContainer(data)) {
            addNested(answer_, shown, explainWithin(subject_, {}, data));
        } else {
            answer_.bytes(shown, data);
        }
    }

    const Subject& subject_;
    Answer& answer_;
};

} // namespace

bool beginsLikePropertyList(std::span<const std::byte> bytes) {
    const std::string_view text = textOf(bytes);
    return text.starts_with("bplist00")
           || (text.starts_with("<?xml") && text.substr(0, 512).contains("plist"))
           || text.starts_with("<!DOCTYPE plist") || text.starts_with("<plist");
}

std::optional<Value> propertyListIn(std::span<const std::byte> bytes) {
    if (!beginsLikePropertyList(bytes)) {
        return std::nullopt;
    }
    auto list = platform::readPropertyList(bytes);
    return list ? std::optional(std::move(list->value)) : std::nullopt;
}

void addPropertyList(const Value& value, std::string_view name, const Subject& subject, Answer& answer) {
    ListFields(subject, answer).add(value, std::string(name), 0);
}

Outcome decodePropertyList(const Subject& subject, Answer& answer) {
    const auto value = propertyListIn(subject.bytes);
    if (!value) {
        return misfit(0, "a property list");
    }
    addPropertyList(*value, {}, subject, answer);
    return {};
}

} // namespace tolvane::attributes
