#pragma once

#include "platform/model/Observers.h"
#include "platform/values/URL.h"

#include <QTimer>

#include <cstddef>
#include <vector>

namespace tolvane::platform {

class QtUserDefaults;

/// The items that were opened last, kept among the user's settings. The list is read anew each time, so that
/// several running instances add to one list.
///
/// Writing waits for the disk, several times. What is added is therefore written a little later, when the
/// windows of the items are there, and once for items that are opened together; at the latest when this
/// object goes.
class RecentDocuments {
public:
    static constexpr std::size_t mostDocuments = 10;

    /// The settings must live longer.
    explicit RecentDocuments(QtUserDefaults& defaults);
    RecentDocuments(const RecentDocuments&) = delete;
    RecentDocuments& operator=(const RecentDocuments&) = delete;
    ~RecentDocuments();

    /// Newest first, no two equal. What the settings hold that is no URL is passed over.
    std::vector<URL> documents() const;

    /// Puts a document first; the oldest falls out when there are too many.
    void add(const URL& document);

    /// Writes at once what has been added.
    void write();

    void clear();

    /// Told when this object changed the list, not when another instance did.
    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

private:
    QtUserDefaults& defaults_;
    /// Newest first: what is not written yet.
    std::vector<URL> added_;
    QTimer writing_;
    Observers observers_;
};

} // namespace tolvane::platform
