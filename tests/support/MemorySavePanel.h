#pragma once

#include "platform/services/Panels.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// The answer to a panel without a screen, which waits until a test gives it.
class AwaitedAnswer {
public:
    void await(PanelCompletionHandler handler) { handler_ = std::move(handler); }

    const std::optional<URL>& chosenURL() const { return chosen_; }

    /// True between being shown and being answered.
    bool isWaiting() const { return handler_ != nullptr; }

    /// Answers as a user would. Nothing happens when the panel is not waiting.
    void answer(int response, std::optional<URL> chosen) {
        chosen_ = std::move(chosen);
        // Taken out first: the handler keeps the panel alive, and is let go of once it has run.
        if (const PanelCompletionHandler handler = std::exchange(handler_, nullptr)) {
            handler(response);
        }
    }

private:
    std::optional<URL> chosen_;
    PanelCompletionHandler handler_;
};

/// A save panel without a screen that keeps its settings.
class MemorySavePanel final : public SavePanel, public AwaitedAnswer {
public:
    void setCanCreateDirectories(bool allowed) override {
        calls_.emplace_back("setCanCreateDirectories");
        canCreateDirectories_ = allowed;
    }
    void setAllowedFileTypes(std::vector<std::string> extensions) override {
        calls_.emplace_back("setAllowedFileTypes");
        fileTypes_ = std::move(extensions);
    }
    void setDirectoryURL(URL folder) override {
        calls_.emplace_back("setDirectoryURL");
        directory_ = std::move(folder);
    }
    void setNameFieldStringValue(std::string name) override {
        calls_.emplace_back("setNameFieldStringValue");
        name_ = std::move(name);
    }
    void setSubject(URL item) override {
        calls_.emplace_back("setSubject");
        subject_ = std::move(item);
    }
    void beginWithCompletionHandler(PanelCompletionHandler handler) override {
        calls_.emplace_back("beginWithCompletionHandler");
        await(std::move(handler));
    }
    std::optional<URL> chosenURL() const override { return AwaitedAnswer::chosenURL(); }

    /// What was called, in order.
    const std::vector<std::string>& calls() const { return calls_; }

    bool canCreateDirectories() const { return canCreateDirectories_; }
    const std::vector<std::string>& allowedFileTypes() const { return fileTypes_; }
    const std::optional<URL>& directoryURL() const { return directory_; }
    const std::string& nameFieldStringValue() const { return name_; }
    const std::optional<URL>& subject() const { return subject_; }

private:
    std::vector<std::string> calls_;
    bool canCreateDirectories_ = false;
    std::vector<std::string> fileTypes_;
    std::optional<URL> directory_;
    std::string name_;
    std::optional<URL> subject_;
};

/// Makes panels, and holds the newest one to be answered.
class MemorySavePanels final : public SavePanels {
public:
    std::shared_ptr<SavePanel> savePanel() override {
        auto panel = std::make_shared<MemorySavePanel>();
        newest_ = panel;
        return panel;
    }

    /// Null when no panel was made, or the newest one has been answered and let go of.
    std::shared_ptr<MemorySavePanel> newest() const { return newest_.lock(); }

private:
    std::weak_ptr<MemorySavePanel> newest_;
};

} // namespace tolvane::platform
