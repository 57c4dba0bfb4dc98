#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>
#include <CoreFoundation/CoreFoundation.h>

/// A strict substitute of the system's C interfaces, so that platform/macos/ runs on Linux. It proves how we
/// handle objects, errors and values, never what macOS does.
///
/// It checks the kind of every object that a function is given, counts references, and can make any call
/// fail. A wrong kind, a reference too many or too few, and an object that is used after its end fail the
/// test.
namespace tolvane::tests::macos {

enum class Kind : CFTypeID {
    string = 1,
    number,
    boolean,
    date,
    data,
    array,
    dictionary,
    url,
    uuid,
    null,
    error,
    locale,
    formatter,
    other
};

/// A number as the system keeps it.
struct Number {
    CFNumberType type = kCFNumberSInt64Type;
    std::variant<std::int64_t, double> value;
    bool isTooLarge = false; ///< Outside 64 bits, so that no type takes it.
};

/// Makers of objects with one reference, which belongs to the caller, or to the container that takes it over.
CFTypeRef newString(std::u16string text);
CFTypeRef newString(const char* text);
CFTypeRef newNumber(Number number);
CFTypeRef newBoolean(bool value);
CFTypeRef newDate(double seconds);
CFTypeRef newData(std::vector<std::uint8_t> bytes);
CFTypeRef newArray(std::vector<CFTypeRef> elements);
CFTypeRef newDictionary(std::vector<std::pair<CFTypeRef, CFTypeRef>> entries);
CFTypeRef newURL(std::string text);
CFTypeRef newUUID(CFUUIDBytes bytes);
CFTypeRef newNull();
CFTypeRef newError(const char* domain, CFIndex code, const char* description);
CFTypeRef newOther();

/// How many objects live that no constant is.
std::size_t livingObjects();

/// What the system answers, and what it was asked. Only one exists at a time; the functions use it.
class Substitute {
public:
    Substitute();
    Substitute(const Substitute&) = delete;
    Substitute& operator=(const Substitute&) = delete;
    /// Fails the test when an object is left.
    ~Substitute();

    static Substitute& current();

    /// Makes the call with this index fail, counted from now; calls that cannot fail do not count.
    void failCall(std::size_t index);
    /// Whether one was made to fail.
    bool hasFailed() const { return hasFailed_; }
    /// For the functions: counts a call and says whether it is to fail.
    bool isToFail();

    /// The answers, each made anew: null stands for a failure with `error`.
    std::function<CFTypeRef()> resourceValues;
    std::function<CFTypeRef()> fileAttributes;
    std::function<CFTypeRef()> bookmark;
    std::function<CFTypeRef()> resolvedItem;
    std::function<CFTypeRef()> bookmarkProperties;
    std::function<CFTypeRef()> error;
    std::function<CFTypeRef()> homeFolder;
    bool isStale = false;
    std::function<std::string(CFAbsoluteTime)> formattedDate = [](CFAbsoluteTime) { return "a date"; };
    /// Of listxattr and getxattr: the number of bytes, or the error number.
    std::expected<ssize_t, int> attributeAnswer = 0;
    /// Answer instead of `attributeAnswer`, as the calls themselves do.
    std::function<ssize_t(const char* path, char* names, std::size_t size)> listAttributes;
    std::function<ssize_t(const char* path, const char* name, void* value, std::size_t size)> getAttribute;

    /// One line for each call that the system itself answers, with its arguments.
    std::vector<std::string> calls;
    /// What the call that is being answered is about: a path, the text of a URL, or bytes.
    std::string subject;

private:
    std::optional<std::size_t> failing_;
    bool hasFailed_ = false;
};

} // namespace tolvane::tests::macos
