#include "platform/bookmark/resolution/ComparedFacts.h"

#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/values/Pieces.h"

#include <algorithm>
#include <cmath>

namespace tolvane::platform {

namespace {

template <typename Type>
std::optional<Value> valueOf(const std::optional<Type>& fact) {
    return fact ? std::optional(Value(*fact)) : std::nullopt;
}

std::optional<Value> pathOf(const BookmarkContents& contents) {
    if (!contents.pathComponents) {
        return std::nullopt;
    }
    std::string path;
    for (const std::string& component : *contents.pathComponents) {
        path += "/" + component;
    }
    return Value(path.empty() ? "/" : path);
}

std::optional<Value> nameOf(const BookmarkContents& contents) {
    if (contents.pathComponents && !contents.pathComponents->empty()) {
        return Value(contents.pathComponents->back());
    }
    return valueOf(contents.fileName);
}

std::optional<Value> numbersOf(const BookmarkContents& contents) {
    if (!contents.fileIDs) {
        return std::nullopt;
    }
    const std::size_t above = nonEmptyPieces(contents.volume.path.value_or(""), '/').size();
    Array numbers;
    for (std::size_t i = above; i < contents.fileIDs->size(); ++i) {
        const std::optional<std::int64_t> number = (*contents.fileIDs)[i];
        numbers.push_back(number ? Value(*number) : Value());
    }
    return Value(std::move(numbers));
}

bool haveOtherNumbers(const Value& stored, const Value& found) {
    const auto* const some = stored.as<Array>();
    const auto* const others = found.as<Array>();
    return some->size() != others->size()
           || !std::ranges::equal(*some, *others, [](const Value& one, const Value& other) {
                  return one == other || one == Value() || other == Value();
              });
}

bool areOtherDates(const Value& stored, const Value& found) {
    constexpr double sameMoment = 1e-6;
    return std::abs(
               stored.as<Date>()->timeIntervalSinceReferenceDate()
               - found.as<Date>()->timeIntervalSinceReferenceDate())
           >= sameMoment;
}

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool areOtherUUIDs(const Value& stored, const Value& found) {
    return !std::ranges::equal(*stored.as<std::string>(), *found.as<std::string>(), {}, lowerCase, lowerCase);
}

bool areOthers(const Value& stored, const Value& found) {
    return stored != found;
}

} // namespace

std::vector<ComparedFact> comparedFacts(const BookmarkContents& stored, const BookmarkContents& found) {
    std::vector<ComparedFact> facts;
    const auto add = [&](std::string_view name, auto fact, auto differ) {
        ComparedFact compared{name, fact(stored), fact(found)};
        if (compared.stored && compared.found) {
            compared.differs = differ(*compared.stored, *compared.found);
        }
        facts.push_back(std::move(compared));
    };
    const auto ofVolume = [](auto member) {
        return [member](const BookmarkContents& contents) { return valueOf(contents.volume.*member); };
    };
    add("path", pathOf, areOthers);
    add("name", nameOf, areOthers);
    add("fileNumbers", numbersOf, haveOtherNumbers);
    add("creationDate", [](const auto& contents) { return valueOf(contents.creationDate); }, areOtherDates);
    add("volumeName", ofVolume(&BookmarkVolume::name), areOthers);
    add("volumeUUID", ofVolume(&BookmarkVolume::uuid), areOtherUUIDs);
    add("volumeCapacity", ofVolume(&BookmarkVolume::capacity), areOthers);
    add("volumeCreationDate", ofVolume(&BookmarkVolume::creationDate), areOtherDates);
    add("mountPoint", ofVolume(&BookmarkVolume::path), areOthers);
    return facts;
}

std::vector<ComparedFact> comparedFacts(std::span<const std::byte> stored, std::span<const std::byte> found) {
    const auto contentsOf = [](std::span<const std::byte> bytes) {
        const auto structure = readBookmarkOrAlias(bytes);
        return structure ? targetContents(*structure) : BookmarkContents();
    };
    return comparedFacts(contentsOf(stored), contentsOf(found));
}

} // namespace tolvane::platform
