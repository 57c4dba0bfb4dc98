#include "attributes/Decoders.h"
#include "attributes/FinderInfo.h"
#include "attributes/Parsing.h"
#include "attributes/PropertyListFields.h"

#include <array>

namespace tolvane::attributes {

namespace {

using platform::Value;

/// The texts of a list; nothing if there is anything else in it.
std::optional<std::vector<std::string>> textsIn(const Value& value) {
    const auto* const array = value.as<platform::Array>();
    if (array == nullptr) {
        return std::nullopt;
    }
    std::vector<std::string> texts;
    for (const Value& element : *array) {
        const auto* const text = element.as<std::string>();
        if (text == nullptr) {
            return std::nullopt;
        }
        texts.push_back(*text);
    }
    return texts;
}

/// The gist of one value: its text, date or truth; empty for others.
std::string gistOf(const Value& value) {
    if (const auto* const text = value.as<std::string>()) {
        return shortened(*text);
    }
    if (const auto* const date = value.as<platform::Date>()) {
        return dateTextOfDouble(*date);
    }
    if (const auto* const is = value.as<bool>()) {
        return *is ? "yes" : "no";
    }
    if (const auto number = value.exactInt64()) {
        return std::to_string(*number);
    }
    std::string gist;
    if (const auto* const array = value.as<platform::Array>(); array != nullptr && array->size() <= 4) {
        for (const Value& element : *array) {
            const std::string one =
                element.as<platform::Array>() == nullptr ? gistOf(element) : std::string();
            gist.append(gist.empty() || one.empty() ? "" : "; ").append(one);
        }
    }
    return gist;
}

} // namespace

Outcome decodeMetadata(const Subject& subject, Answer& answer) {
    const std::string_view label = subject.label.empty() ? std::string_view("Value") : subject.label;
    const auto value = propertyListIn(subject.bytes);
    if (!value) {
        // Some tools write bare text.
        const std::string_view text = textWithoutNul(subject.bytes);
        if (beginsLikePropertyList(subject.bytes) || text.empty() || !isText(text)) {
            return misfit(0, "a property list, or text");
        }
        answer.text(label, text);
        answer.note("Bare text, where macOS itself writes a property list");
        return {};
    }
    addPropertyList(*value, label, subject, answer);
    return {};
}

Outcome decodeMetadataGist(const Subject& subject, Answer& answer) {
    Outcome outcome = decodeMetadata(subject, answer);
    if (const auto value = propertyListIn(subject.bytes)) {
        if (const std::string gist = gistOf(*value); !gist.empty()) {
            answer.summary("macOS: " + std::string(subject.label) + ": " + gist + ".");
        }
    }
    return outcome;
}

Outcome decodeWhereFroms(const Subject& subject, Answer& answer) {
    const auto value = propertyListIn(subject.bytes);
    const auto texts = value ? textsIn(*value) : std::nullopt;
    if (!texts) {
        return misfit(0, "a property list with an array of texts");
    }
    const bool isMail = texts->size() == 3 && (*texts)[2].starts_with("message:");
    const bool isDevice = texts->size() == 1 && !(*texts)[0].contains("://");
    static constexpr std::array<std::string_view, 3> ofMail{"Sender", "Subject", "Message"};
    static constexpr std::array<std::string_view, 2> ofDownload{"File address", "Page address"};
    for (std::size_t i = 0; i < texts->size(); ++i) {
        const std::string_view name = isMail     ? ofMail.at(i)
                                      : isDevice ? "Sender's device"
                                      : i < 2    ? ofDownload.at(i)
                                                 : "Further address";
        answer.add(name, (*texts)[i].empty() ? "not stated" : (*texts)[i], (*texts)[i]);
    }
    std::string from = texts->empty() || (*texts)[0].empty() ? "not stated" : shortened((*texts)[0]);
    if (!isMail && texts->size() > 1 && !(*texts)[1].empty()) {
        from += ", found on " + shortened((*texts)[1]);
    }
    answer.summary(
        (isMail     ? "macOS: the file came with a mail from "
         : isDevice ? "macOS: the file was sent by the device "
                    : "macOS: the file was downloaded from ")
        + from + ".");
    return {};
}

Outcome decodeUserTags(const Subject& subject, Answer& answer) {
    const auto value = propertyListIn(subject.bytes);
    const auto texts = value ? textsIn(*value) : std::nullopt;
    if (!texts) {
        return misfit(0, "a property list with an array of texts");
    }
    std::string all;
    for (const std::string& tag : *texts) {
        const std::size_t end = tag.find('\n');
        const std::string name = tag.substr(0, end);
        const auto color = end == std::string::npos
                               ? std::optional<std::uint32_t>()
                               : parsedNumber<std::uint32_t>(std::string_view(tag).substr(end + 1));
        std::string text = name;
        if (color && *color != 0) {
            const std::string_view known = colorName(*color);
            text += " (" + (known.empty() ? "colour " + std::to_string(*color) : std::string(known)) + ")";
        } else if (end != std::string::npos && !color) {
            answer.note("What follows a tag's name is no colour: " + shortened(tag.substr(end + 1)));
        }
        answer.add(
            "Tag", text, platform::Dictionary{{"name", name}, {"color", std::uint64_t{color.value_or(0)}}});
        all.append(all.empty() ? "" : ", ").append(text);
    }
    answer.summary("Tags given in the Finder: " + (all.empty() ? "none" : shortened(all)) + ".");
    return {};
}

} // namespace tolvane::attributes
