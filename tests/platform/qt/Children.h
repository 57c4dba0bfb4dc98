#pragma once

#include <QWidget>

#include <vector>

namespace tolvane::tests {

/// The child of this name, or null. Unlike Qt's own search it finds classes without Q_OBJECT.
template <typename T>
T* childOf(const QWidget& parent, const char* name) {
    return dynamic_cast<T*>(parent.findChild<QWidget*>(name));
}

template <typename T>
std::vector<const T*> childrenOf(const QWidget& parent) {
    std::vector<const T*> found;
    for (const QWidget* const child : parent.findChildren<QWidget*>()) {
        if (const auto* const one = dynamic_cast<const T*>(child)) {
            found.push_back(one);
        }
    }
    return found;
}

} // namespace tolvane::tests
