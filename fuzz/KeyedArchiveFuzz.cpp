// Unarchives any property list, and checks that what comes out is bounded and the same every time.
#include "fuzz/Fuzz.h"
#include "platform/propertylist/KeyedArchive.h"
#include "platform/propertylist/PropertyList.h"

namespace {

using namespace tolvane;

std::size_t depthOf(const platform::Value& value) {
    std::size_t deepest = 0;
    if (const auto* const array = value.as<platform::Array>()) {
        for (const platform::Value& element : *array) {
            deepest = std::max(deepest, 1 + depthOf(element));
        }
    } else if (const auto* const dictionary = value.as<platform::Dictionary>()) {
        for (const auto& [key, element] : *dictionary) {
            deepest = std::max(deepest, 1 + depthOf(element));
        }
    }
    return deepest;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto list = platform::readPropertyList(fuzz::bytesOf(data, size));
    const auto objects = list ? platform::unarchivedObjects(list->value) : std::nullopt;
    if (!objects) {
        return 0;
    }
    // A reference that is left, and the name of a class, add a level.
    fuzz::require(
        depthOf(objects->top) <= platform::deepestArchivedObject + 2, "objects are not nested too deep");
    const auto again = platform::unarchivedObjects(list->value);
    fuzz::require(
        again->cyclic == objects->cyclic && again->missing == objects->missing
            && again->leftOut == objects->leftOut,
        "the same list gives the same objects");
    return 0;
}
