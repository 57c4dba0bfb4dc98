// Unarchives any property list, and checks that what comes out is bounded and has no reference without a
// count.
#include "fuzz/Fuzz.h"
#include "platform/propertylist/KeyedArchive.h"
#include "platform/propertylist/PropertyList.h"

namespace {

using namespace tolvane;

struct Seen {
    std::size_t references = 0;
    std::size_t deepest = 0;

    void add(const platform::Value& value, std::size_t level) {
        deepest = std::max(deepest, level);
        if (const auto* const array = value.as<platform::Array>()) {
            for (const platform::Value& element : *array) {
                add(element, level + 1);
            }
        } else if (const auto* const dictionary = value.as<platform::Dictionary>()) {
            const auto* const number = dictionary->find("CF$UID");
            const bool isReference = dictionary->size() == 1 && number != nullptr && number->exactUInt64();
            references += isReference ? 1U : 0U;
            for (const auto& [key, element] : *dictionary) {
                add(element, level + 1);
            }
        }
    }
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto list = platform::readPropertyList(fuzz::bytesOf(data, size));
    const auto objects = list ? platform::unarchivedObjects(list->value) : std::nullopt;
    if (!objects) {
        return 0;
    }
    Seen seen;
    seen.add(objects->top, 0);
    fuzz::require(
        seen.references <= objects->cyclic + objects->missing + objects->leftOut,
        "every reference that is left is counted");
    // Plain lists within an object add their own levels, which count as well.
    fuzz::require(seen.deepest <= platform::deepestArchivedObject + 2, "objects are not nested too deep");
    return 0;
}
