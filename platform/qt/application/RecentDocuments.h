#pragma once

#include "platform/model/Observers.h"
#include "platform/values/URL.h"

#include <QTimer>

#include <cstddef>
#include <vector>

namespace tolvane::platform {

class QtUserDefaults;

/// The items opened last, stored in the user's settings and read each time, so running instances share one
/// list.
///
/// Writing waits for the disk several times, so additions are written together a little later, when the
/// windows are shown, at the latest on destruction.
class RecentDocuments {
public:
    static constexpr std::size_t mostDocuments = 10;

    /// The settings must live longer.
    explicit RecentDocuments(QtUserDefaults& defaults);
    RecentDocuments(const RecentDocuments&) = delete;
    RecentDocuments& operator=(const RecentDocuments&) = delete;
    ~RecentDocuments() { write(); }

    /// Newest first, without duplicates. Invalid URLs in the settings are skipped.
    std::vector<URL> documents() const;

    /// Puts a document first; the oldest falls out when there are too many.
    void add(const URL& document);

    /// Writes at once what has been added.
    void write();

    void clear();

    /// Called when this object changed the list, not another instance.
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
