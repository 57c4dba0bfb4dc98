#include "platform/model/Observers.h"

namespace tolvane::platform {

Subscription Observers::add(Function observer) {
    auto handle = std::make_shared<const Function>(std::move(observer));
    observers_.push_back(handle);
    return Subscription(std::move(handle));
}

void Observers::notify() {
    if (observers_.empty()) {
        return;
    }
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    // A copy, since an observer may add others or destroy this list.
    const auto current = observers_;
    for (const auto& observer : current) {
        if (const auto function = observer.lock()) {
            (*function)();
        }
    }
}

} // namespace tolvane::platform
