#pragma once

#include "tests/platform/macos/substitute/Substitute.h"

namespace tolvane::tests::macos {

struct Nothing {};
struct ErrorFacts {
    CFTypeRef domain = nullptr;
    CFIndex code = 0;
    std::string description;
};

struct Object {
    Kind kind = Kind::other;
    std::variant<
        Nothing,
        std::u16string,
        Number,
        bool,
        double,
        std::vector<std::uint8_t>,
        std::vector<CFTypeRef>,
        std::vector<std::pair<CFTypeRef, CFTypeRef>>,
        std::string,
        CFUUIDBytes,
        ErrorFacts>
        content;
    long references = 1;
    bool isConstant = false;
};

/// The object behind a reference, which must live and be of this kind; otherwise the test ends.
const Object& objectOf(CFTypeRef reference, Kind kind);
const Object& objectOf(CFTypeRef reference);

template <typename Content>
const Content& contentOf(CFTypeRef reference, Kind kind) {
    return std::get<Content>(objectOf(reference, kind).content);
}

CFTypeRef newObject(Kind kind, decltype(Object::content) content);
CFTypeRef retained(CFTypeRef reference);
void release(CFTypeRef reference);

} // namespace tolvane::tests::macos
