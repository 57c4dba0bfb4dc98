#pragma once

#include "platform/model/Controls.h"

#include <cstddef>
#include <utility>

namespace tolvane::platform {

/// How far work has come. Nothing is shown while there is none.
class ProgressIndicator final : public Control {
public:
    struct Progress {
        std::size_t done = 0;
        std::size_t all = 0; ///< Zero if there is no work.

        friend bool operator==(const Progress&, const Progress&) = default;
    };

    const Progress& progress() const { return progress_; }

    /// Notifies the observers if the progress changes.
    void setProgress(Progress progress) {
        if (std::exchange(progress_, progress) != progress) {
            observers_.notify();
        }
    }

    [[nodiscard]] Subscription observe(Observers::Function observer) {
        return observers_.add(std::move(observer));
    }

private:
    Progress progress_;
    Observers observers_;
};

} // namespace tolvane::platform
