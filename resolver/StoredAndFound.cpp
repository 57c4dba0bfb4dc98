#include "resolver/StoredAndFound.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tolvane::resolver {

using platform::ComparedFact;
using platform::ItemMatch;
using platform::Value;
using platform::VolumeMatch;

namespace {

using Title = std::pair<std::string_view, std::string_view>;

constexpr std::array<Title, 9> titles{{
    {"path", "Path"},
    {"name", "Name"},
    {"fileNumbers", "File numbers"},
    {"creationDate", "Created"},
    {"volumeName", "Volume"},
    {"volumeUUID", "Volume UUID"},
    {"volumeCapacity", "Volume size"},
    {"volumeCreationDate", "Volume created"},
    {"mountPoint", "Mount point"},
}};

std::string_view sentenceOf(ItemMatch match) {
    switch (match) {
    case ItemMatch::path:
        return "The item is at the stored path.";
    case ItemMatch::fileNumbers:
        return "The item was found by the stored file numbers: it or a folder above it was renamed.";
    case ItemMatch::search:
        return "The item was found by its file number in the folders around the stored path: it was moved.";
    case ItemMatch::unknown:
        break;
    }
    return "The system does not say how the item was found.";
}

std::string_view sentenceOf(VolumeMatch match) {
    switch (match) {
    case VolumeMatch::uuid:
        return "Its volume was recognised by the UUID.";
    case VolumeMatch::nameAndCapacity:
        return "Its volume was recognised by name and size.";
    case VolumeMatch::nameAndCreationDate:
        return "Its volume was recognised by name and creation date.";
    case VolumeMatch::notNamed:
        return "The bookmark stores nothing by which its volume could be recognised.";
    case VolumeMatch::unknown:
        break;
    }
    return "The system does not say how its volume was recognised.";
}

std::string numberText(const Value& value) {
    const auto* const number = value.as<std::int64_t>();
    return number != nullptr ? std::to_string(*number) : "?";
}

} // namespace

StoredAndFound storedAndFound(
    std::span<const std::byte> bookmark,
    const platform::ResolvedBookmark& resolved,
    const platform::Bookmarks& bookmarks,
    const platform::BookmarkComparer& compare) {
    const auto made = resolved.url ? bookmarks.bookmarkData(*resolved.url)
                                   : platform::Result<platform::Data>(platform::Data());
    return {
        compare(bookmark, made.value_or(platform::Data())),
        made ? std::nullopt : std::optional(made.error())};
}

std::string itemNotComparedText(const platform::Error& failure) {
    return "The facts of the item cannot be read: " + failure.localizedDescription() + ".";
}

std::string howFoundText(const platform::BookmarkMatch& match) {
    return std::string(sentenceOf(match.item)).append(" ").append(sentenceOf(match.volume));
}

std::string factTitle(std::string_view name) {
    const auto title = std::ranges::find(titles, name, &Title::first);
    return std::string(title == titles.end() ? name : title->second);
}

std::string_view agreementText(const ComparedFact& fact) {
    return !fact.differs ? "not compared" : *fact.differs ? "differs" : "same";
}

std::string factText(std::string_view name, const std::optional<Value>& value) {
    if (!value) {
        return {};
    }
    if (const auto* const text = value->as<std::string>()) {
        return *text;
    }
    if (const auto* const date = value->as<platform::Date>()) {
        return date->hasCalendarDate() ? date->iso8601() : date->description();
    }
    if (const auto* const numbers = value->as<platform::Array>()) {
        std::string text;
        for (const Value& number : *numbers) {
            text += (text.empty() ? "" : ", ") + numberText(number);
        }
        return text;
    }
    return numberText(*value) + (name == "volumeCapacity" ? " bytes" : "");
}

std::string storedAndFoundText(
    const platform::BookmarkMatch& match,
    const StoredAndFound& compared,
    const std::function<std::string(std::string_view)>& shown) {
    std::string text = howFoundText(match) + "\n";
    if (compared.failure) {
        text += shown(itemNotComparedText(*compared.failure)) + "\n";
    }
    const auto line = [&](std::string_view indented, const ComparedFact& fact, const auto& value) {
        if (value) {
            text.append(indented).append(shown(factText(fact.name, value))).append("\n");
        }
    };
    for (const ComparedFact& fact : compared.facts) {
        text += factTitle(fact.name);
        if (!fact.stored && !fact.found) {
            text += ": not known\n";
            continue;
        }
        text.append(": ").append(agreementText(fact)).append("\n");
        if (fact.differs == false && fact.stored == fact.found) {
            line("  ", fact, fact.stored);
        } else {
            line("  stored: ", fact, fact.stored);
            line("  found:  ", fact, fact.found);
        }
    }
    return text;
}

} // namespace tolvane::resolver
