#include "tests/platform/macos/substitute/Objects.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

namespace tolvane::tests::macos {

namespace {

struct Living {
    std::vector<std::unique_ptr<Object>> objects;
    Substitute* substitute = nullptr;
};

Living& living() {
    static Living everything;
    return everything;
}

[[noreturn]] void stop(const char* reason) {
    std::cerr << "substitute: " << reason << '\n';
    std::abort();
}

Object& find(CFTypeRef reference) {
    const auto place = std::ranges::find(living().objects, reference, &std::unique_ptr<Object>::get);
    if (place == living().objects.end()) {
        stop(reference == nullptr ? "null is no object" : "this object does not live");
    }
    return **place;
}

void releaseContents(const Object& object) {
    if (const auto* elements = std::get_if<std::vector<CFTypeRef>>(&object.content)) {
        std::ranges::for_each(*elements, release);
    } else if (
        const auto* entries = std::get_if<std::vector<std::pair<CFTypeRef, CFTypeRef>>>(&object.content)) {
        for (const auto& [key, value] : *entries) {
            release(key);
            release(value);
        }
    } else if (const auto* facts = std::get_if<ErrorFacts>(&object.content)) {
        release(facts->domain);
    }
}

} // namespace

CFTypeRef newObject(Kind kind, decltype(Object::content) content) {
    living().objects.push_back(std::make_unique<Object>(Object{kind, std::move(content)}));
    return living().objects.back().get();
}

const Object& objectOf(CFTypeRef reference) {
    return find(reference);
}

const Object& objectOf(CFTypeRef reference, Kind kind) {
    const Object& object = find(reference);
    if (object.kind != kind) {
        stop("this object is of another kind");
    }
    return object;
}

CFTypeRef retained(CFTypeRef reference) {
    ++find(reference).references;
    return reference;
}

void release(CFTypeRef reference) {
    Object& object = find(reference);
    if (--object.references > 0) {
        return;
    }
    if (object.isConstant) {
        stop("a constant is nobody's to release");
    }
    const auto place = std::ranges::find(living().objects, reference, &std::unique_ptr<Object>::get);
    const std::unique_ptr<Object> last = std::move(*place);
    living().objects.erase(place);
    releaseContents(*last);
}

std::size_t livingObjects() {
    return static_cast<std::size_t>(
        std::ranges::count_if(living().objects, [](const auto& object) { return !object->isConstant; }));
}

CFTypeRef newString(std::u16string text) {
    return newObject(Kind::string, std::move(text));
}
CFTypeRef newString(const char* text) {
    std::u16string units;
    for (const char* unit = text; *unit != '\0'; ++unit) {
        units += static_cast<char16_t>(static_cast<unsigned char>(*unit));
    }
    return newString(std::move(units));
}
CFTypeRef newNumber(Number number) {
    return newObject(Kind::number, number);
}
CFTypeRef newBoolean(bool value) {
    return newObject(Kind::boolean, value);
}
CFTypeRef newDate(double seconds) {
    return newObject(Kind::date, seconds);
}
CFTypeRef newData(std::vector<std::uint8_t> bytes) {
    return newObject(Kind::data, std::move(bytes));
}
CFTypeRef newArray(std::vector<CFTypeRef> elements) {
    return newObject(Kind::array, std::move(elements));
}
CFTypeRef newDictionary(std::vector<std::pair<CFTypeRef, CFTypeRef>> entries) {
    return newObject(Kind::dictionary, std::move(entries));
}
CFTypeRef newURL(std::string text) {
    return newObject(Kind::url, std::move(text));
}
CFTypeRef newUUID(CFUUIDBytes bytes) {
    return newObject(Kind::uuid, bytes);
}
CFTypeRef newNull() {
    return newObject(Kind::null, Nothing());
}
CFTypeRef newError(const char* domain, CFIndex code, const char* description) {
    return newObject(Kind::error, ErrorFacts{newString(domain), code, description});
}
CFTypeRef newOther() {
    return newObject(Kind::other, Nothing());
}

Substitute::Substitute() {
    if (living().substitute != nullptr) {
        stop("there is one already");
    }
    living().substitute = this;
}

Substitute::~Substitute() {
    living().substitute = nullptr;
    EXPECT_EQ(livingObjects(), 0U);
}

Substitute& Substitute::current() {
    return *living().substitute;
}

void Substitute::failCall(std::size_t index) {
    failing_ = index;
    hasFailed_ = false;
}

bool Substitute::isToFail() {
    const bool fails = failing_ == 0U;
    if (failing_) {
        failing_ = fails ? std::nullopt : std::optional(*failing_ - 1);
    }
    hasFailed_ = hasFailed_ || fails;
    return fails;
}

namespace {

CFStringRef constantKey(const char* name) {
    const CFTypeRef key = newString(name);
    find(key).isConstant = true;
    return static_cast<CFStringRef>(key);
}

} // namespace

} // namespace tolvane::tests::macos

extern "C" {

using tolvane::tests::macos::constantKey;

const CFArrayCallBacks kCFTypeArrayCallBacks{};
const CFStringRef kCFURLFileSizeKey = constantKey("NSURLFileSizeKey");
const CFStringRef kCFURLTotalFileSizeKey = constantKey("NSURLTotalFileSizeKey");
const CFStringRef kCFURLTypeIdentifierKey = constantKey("NSURLTypeIdentifierKey");
const CFStringRef kCFURLFileResourceIdentifierKey = constantKey("NSURLFileResourceIdentifierKey");
const CFStringRef kCFURLCreationDateKey = constantKey("NSURLCreationDateKey");
const CFStringRef kCFURLAttributeModificationDateKey = constantKey("NSURLAttributeModificationDateKey");
}
