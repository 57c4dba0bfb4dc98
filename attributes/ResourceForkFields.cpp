#include "attributes/Decoders.h"
#include "platform/appledouble/ResourceFork.h"
#include "platform/values/HexDigits.h"

#include <algorithm>

namespace tolvane::attributes {

Outcome decodeResourceFork(const Subject& subject, Answer& answer) {
    constexpr std::string_view blank = "This resource fork intentionally left blank";
    const auto fork = platform::readResourceFork(subject.bytes);
    if (!fork) {
        return misfit(fork.error().offset, std::string(fork.error().expected));
    }
    if (fork->resources.empty()) {
        const bool isBlank = textOf(subject.bytes).contains(blank);
        answer.add("Resources", "none", std::uint64_t{0});
        answer.summary(
            isBlank ? "Resource fork without resources, as macOS writes to volumes that have no forks."
                    : "Resource fork without resources.");
        return {};
    }
    answer.number("Resources", fork->resources.size());
    std::size_t types = 0;
    for (std::size_t i = 0; i < fork->resources.size();) {
        const std::uint32_t type = fork->resources[i].type;
        std::size_t count = 0;
        while (i + count < fork->resources.size() && fork->resources[i + count].type == type) {
            ++count;
        }
        answer.add(
            "Type", "'" + fork->resources[i].typeText() + "': " + std::to_string(count),
            std::uint64_t{count});
        i += count;
        ++types;
    }
    for (const platform::ForkResource& resource : fork->resources) {
        std::string text = "'" + resource.typeText() + "' " + std::to_string(resource.number);
        if (const std::string name = resource.nameText(); !name.empty()) {
            text += " \"" + name + "\"";
        }
        text += ", " + std::to_string(resource.bytes.size()) + " bytes";
        answer.add(
            "Resource", text,
            platform::Dictionary{
                {"type", resource.typeText()},
                {"number", std::int64_t{resource.number}},
                {"name", resource.nameText()},
                {"size", std::uint64_t{resource.bytes.size()}}});
    }
    constexpr std::int16_t customIcon = -16455;
    const auto isCustomIcon = [](const platform::ForkResource& resource) {
        return resource.type == platform::resourceType("icns") && resource.number == customIcon;
    };
    const bool hasIcon = std::ranges::any_of(fork->resources, isCustomIcon);
    answer.summary(
        "Resource fork: " + std::to_string(fork->resources.size())
        + (fork->resources.size() == 1 ? " resource" : " resources") + " of " + std::to_string(types)
        + (types == 1 ? " type" : " types") + (hasIcon ? ", among them the item's own icon." : "."));
    return {};
}

} // namespace tolvane::attributes
