#pragma once

#include "platform/services/AppleScript.h"
#include "tests/support/MemoryOpenPanel.h"
#include "tests/support/MemoryPreviewPanel.h"
#include "tests/support/ScriptedSources.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Panels and scripts like those in memory that log what they were asked and fail if a test says so.
namespace tolvane::tests {

class ScriptedOpenPanel final : public platform::OpenPanel {
public:
    explicit ScriptedOpenPanel(CallLog& log) : log_(log) {}

    platform::MemoryOpenPanel inner;

    void setAllowsMultipleSelection(bool allowed) override { note("setAllowsMultipleSelection", allowed); }
    void setCanChooseDirectories(bool allowed) override { note("setCanChooseDirectories", allowed); }
    void setShowsHiddenFiles(bool shown) override { note("setShowsHiddenFiles", shown); }
    void setTreatsFilePackagesAsDirectories(bool treated) override {
        note("setTreatsFilePackagesAsDirectories", treated);
    }
    void setResolvesAliases(bool resolved) override { note("setResolvesAliases", resolved); }
    void beginSheetModalForWindow(
        platform::Window& window, platform::PanelCompletionHandler handler) override {
        log_.emplace_back("beginSheetModalForWindow");
        inner.beginSheetModalForWindow(window, std::move(handler));
    }
    std::optional<platform::URL> chosenURL() const override { return inner.chosenURL(); }

private:
    void note(std::string_view setting, bool value) {
        log_.push_back(std::string(setting) + (value ? " true" : " false"));
    }

    CallLog& log_;
};

class ScriptedOpenPanels final : public platform::OpenPanels {
public:
    explicit ScriptedOpenPanels(CallLog& log) : log_(log) {}

    std::shared_ptr<platform::OpenPanel> openPanel() override {
        log_.emplace_back("openPanel");
        auto panel = std::make_shared<ScriptedOpenPanel>(log_);
        newest_ = panel;
        return panel;
    }

    /// Null once the newest panel has been answered and released.
    std::shared_ptr<ScriptedOpenPanel> newest() const { return newest_.lock(); }

private:
    CallLog& log_;
    std::weak_ptr<ScriptedOpenPanel> newest_;
};

class ScriptedPreviewPanels final : public platform::PreviewPanels {
public:
    explicit ScriptedPreviewPanels(CallLog& log) : log_(log) {}

    /// False simulates a system without the panel.
    bool available = true;

    std::shared_ptr<platform::PreviewPanel> sharedPreviewPanel() override {
        log_.emplace_back("sharedPreviewPanel");
        return available ? panel_ : nullptr;
    }

    platform::MemoryPreviewPanel& panel() { return panel_->inner; }
    platform::Sender sender() const { return panel_->sender; }

private:
    class Panel final : public platform::PreviewPanel {
    public:
        explicit Panel(CallLog& log) : log_(log) {}

        platform::MemoryPreviewPanel inner;
        platform::Sender sender = nullptr;

        void setDelegate(std::weak_ptr<platform::PreviewPanelDelegate> delegate) override {
            log_.emplace_back("setDelegate");
            inner.setDelegate(std::move(delegate));
        }
        void setDataSource(std::weak_ptr<platform::PreviewPanelDataSource> dataSource) override {
            log_.emplace_back("setDataSource");
            inner.setDataSource(std::move(dataSource));
        }
        void makeKeyAndOrderFront(platform::Sender given) override {
            log_.emplace_back("makeKeyAndOrderFront");
            sender = given;
            inner.makeKeyAndOrderFront(given);
        }

    private:
        CallLog& log_;
    };

    CallLog& log_;
    std::shared_ptr<Panel> panel_ = std::make_shared<Panel>(log_);
};

class ScriptedAppleScripts final : public platform::AppleScripts {
public:
    explicit ScriptedAppleScripts(CallLog& log) : log_(log) {}

    /// False makes every text an invalid script.
    bool givesScripts = true;
    /// If set, running a script fails with this.
    std::optional<platform::Error> failure;

    std::unique_ptr<platform::AppleScript> initWithSource(std::string_view source) override {
        log_.push_back("initWithSource " + std::string(source));
        return givesScripts ? std::make_unique<Script>(log_, failure) : nullptr;
    }

private:
    class Script final : public platform::AppleScript {
    public:
        Script(CallLog& log, std::optional<platform::Error> failure)
            : log_(log)
            , failure_(std::move(failure)) {}

        platform::Result<void> executeAndReturnError() override {
            log_.emplace_back("execute");
            if (failure_) {
                return std::unexpected(*failure_);
            }
            return {};
        }

    private:
        CallLog& log_;
        std::optional<platform::Error> failure_;
    };

    CallLog& log_;
};

} // namespace tolvane::tests
