// Reads any bytes as a property list, in whichever form they are, and what was read again from what was
// written of it in each form that can hold it.
#include "fuzz/Fuzz.h"
#include "platform/propertylist/PropertyList.h"
#include "platform/propertylist/PropertyListReaders.h"
#include "platform/values/Description.h"
#include "platform/values/Utf8.h"
#include "tests/support/PropertyListWriters.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace {

using namespace tolvane;

/// What a list holds, however deep, but for identifiers of keyed archives, which are a few bytes in binary
/// lists.
struct Counted {
    std::uint64_t weight = 0;
    std::size_t deepest = 0;

    void add(const platform::Value& value, std::size_t level) {
        deepest = std::max(deepest, level);
        if (const auto* const text = value.as<std::string>()) {
            addText(*text);
        } else if (const auto* const data = value.as<platform::Data>()) {
            weight += data->size();
        } else if (const auto* const array = value.as<platform::Array>()) {
            for (const platform::Value& element : *array) {
                weight += elementWeight;
                add(element, level + 1);
            }
        } else if (const auto* const dictionary = value.as<platform::Dictionary>()) {
            if (dictionary->find("CF$UID") != nullptr) {
                return;
            }
            for (const auto& [key, element] : *dictionary) {
                weight += elementWeight;
                addText(key);
                add(element, level + 1);
            }
        }
    }

    void addText(const std::string& text) {
        fuzz::require(platform::isValidUtf8(text), "texts are UTF-8");
        weight += text.size();
    }

    static constexpr std::uint64_t elementWeight = 32;
};

void requireSame(const std::optional<std::string>& written, const std::string& binary) {
    if (!written) {
        return;
    }
    const auto again = platform::readPropertyList(std::as_bytes(std::span(*written)));
    fuzz::require(again.has_value(), "what was written can be read");
    fuzz::require(tests::binaryPropertyList(again->value) == binary, "and is what was read before");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto list = platform::readPropertyList(fuzz::bytesOf(data, size));
    if (!list) {
        fuzz::require(list.error().offset <= size, "a fault lies within the bytes");
        fuzz::require(!list.error().expected.empty(), "a fault says what was expected");
        return 0;
    }
    Counted counted;
    counted.add(list->value, 0);
    fuzz::require(
        counted.weight <= size * platform::mostPropertyListGrowth + platform::propertyListAllowance,
        "a list has its limits");
    fuzz::require(
        counted.deepest <= platform::deepestPropertyListLevel, "a list is not nested deeper than is safe");
    constexpr std::uint64_t slowToWrite = std::uint64_t{1} << 20U;
    if (counted.weight > slowToWrite) {
        return 0;
    }
    fuzz::require(platform::isValidUtf8(platform::description(list->value)), "a described list is UTF-8");
    const auto binary = tests::binaryPropertyList(list->value);
    fuzz::require(binary.has_value(), "a list can be written");
    requireSame(binary, *binary);
    requireSame(tests::xmlPropertyList(list->value), *binary);
    requireSame(tests::textPropertyList(list->value), *binary);
    return 0;
}
