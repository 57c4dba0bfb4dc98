#pragma once

#include "platform/model/Window.h"
#include "platform/services/Panels.h"

#include <optional>
#include <utility>

namespace tolvane::platform {

/// An open panel without a screen: it waits until a test answers it.
class MemoryOpenPanel final : public OpenPanel {
public:
    void setAllowsMultipleSelection(bool /*allowed*/) override {}
    void setCanChooseDirectories(bool /*allowed*/) override {}
    void setShowsHiddenFiles(bool /*shown*/) override {}
    void setTreatsFilePackagesAsDirectories(bool /*treated*/) override {}
    void setResolvesAliases(bool /*resolved*/) override {}
    void beginSheetModalForWindow(Window& window, PanelCompletionHandler handler) override {
        window_ = &window;
        handler_ = std::move(handler);
    }
    std::optional<URL> chosenURL() const override { return chosen_; }

    /// The window that waits for the answer; null when none does.
    const Window* window() const { return window_; }

    /// True between being shown and being answered.
    bool isWaiting() const { return handler_ != nullptr; }

    /// Answers as a user would. Nothing happens when the panel is not waiting.
    void answer(int response, std::optional<URL> chosen) {
        // Taken out first: the handler keeps this panel alive, and is let go of once it has run.
        const PanelCompletionHandler handler = std::exchange(handler_, nullptr);
        if (handler) {
            window_ = nullptr;
            chosen_ = std::move(chosen);
            handler(response);
        }
    }

private:
    const Window* window_ = nullptr;
    std::optional<URL> chosen_;
    PanelCompletionHandler handler_;
};

} // namespace tolvane::platform
