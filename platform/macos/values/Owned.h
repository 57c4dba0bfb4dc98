#pragma once

#include <utility>
#include <CoreFoundation/CoreFoundation.h>

namespace tolvane::platform::macos {

/// A reference that the program owns, as those that functions named Create or Copy return; released with the
/// object. May be null.
template <typename Reference>
class Owned {
public:
    explicit Owned(Reference reference = nullptr) : reference_(reference) {}
    Owned(Owned&& other) noexcept : reference_(std::exchange(other.reference_, nullptr)) {}
    Owned(const Owned&) = delete;
    Owned& operator=(Owned&&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (reference_ != nullptr) {
            CFRelease(reference_);
        }
    }

    Reference get() const { return reference_; }
    explicit operator bool() const { return reference_ != nullptr; }

    /// Hands the reference over to the caller.
    Reference release() { return std::exchange(reference_, nullptr); }

    /// Where a function stores a reference that the caller then owns. Only for one that is null.
    Reference* out() { return &reference_; }

private:
    Reference reference_;
};

} // namespace tolvane::platform::macos
