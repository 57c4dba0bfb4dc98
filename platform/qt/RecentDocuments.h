#pragma once

#include "platform/Observers.h"
#include "platform/URL.h"

#include <cstddef>
#include <vector>

namespace tolvane::platform {

class QtUserDefaults;

/// The items that were opened last, kept among the user's settings. The list is read anew each time, so that
/// several running instances add to one list.
class RecentDocuments {
public:
    static constexpr std::size_t mostDocuments = 10;

    /// The settings must live longer.
    explicit RecentDocuments(QtUserDefaults& defaults) : defaults_(defaults) {}

    /// Newest first, no two equal. What the settings hold that is no URL is passed over.
    std::vector<URL> documents() const;

    /// Puts a document first; the oldest falls out when there are too many.
    void add(const URL& document);

    void clear();

    /// Told when this object changed the list, not when another instance did.
    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

private:
    QtUserDefaults& defaults_;
    Observers observers_;
};

} // namespace tolvane::platform
