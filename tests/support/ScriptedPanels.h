#pragma once

#include "platform/model/Window.h"
#include "platform/services/AppleScript.h"
#include "platform/services/PreviewPanel.h"
#include "tests/support/MemorySavePanel.h"
#include "tests/support/ScriptedSources.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Panels and scripts without a screen that log what they were asked and fail if a test says so.
namespace tolvane::tests {

class ScriptedOpenPanel final : public platform::OpenPanel, public LoggingService {
public:
    using LoggingService::LoggingService;

    platform::AwaitedAnswer inner;
    /// The window that waits for the answer.
    const platform::Window* window = nullptr;

    void setAllowsMultipleSelection(bool allowed) override { set("setAllowsMultipleSelection", allowed); }
    void setCanChooseDirectories(bool allowed) override { set("setCanChooseDirectories", allowed); }
    void setShowsHiddenFiles(bool shown) override { set("setShowsHiddenFiles", shown); }
    void setTreatsFilePackagesAsDirectories(bool treated) override {
        set("setTreatsFilePackagesAsDirectories", treated);
    }
    void setResolvesAliases(bool resolved) override { set("setResolvesAliases", resolved); }
    void beginSheetModalForWindow(
        platform::Window& given, platform::PanelCompletionHandler handler) override {
        note("beginSheetModalForWindow");
        window = &given;
        inner.await(std::move(handler));
    }
    std::optional<platform::URL> chosenURL() const override { return inner.chosenURL(); }

private:
    void set(std::string_view setting, bool value) const {
        note(std::string(setting) + (value ? " true" : " false"));
    }
};

/// Makes panels, and holds the newest one to be answered.
class ScriptedOpenPanels final : public platform::OpenPanels, public LoggingService {
public:
    using LoggingService::LoggingService;

    std::shared_ptr<platform::OpenPanel> openPanel() override {
        note("openPanel");
        auto panel = std::make_shared<ScriptedOpenPanel>(log());
        newest_ = panel;
        return panel;
    }

    /// Null once the newest panel has been answered and released.
    std::shared_ptr<ScriptedOpenPanel> newest() const { return newest_.lock(); }

private:
    std::weak_ptr<ScriptedOpenPanel> newest_;
};

/// Asks for its items when it is shown, and keeps them.
class ScriptedPreviewPanel final : public platform::PreviewPanel, public LoggingService {
public:
    using LoggingService::LoggingService;

    std::weak_ptr<platform::PreviewPanelDelegate> delegate;
    std::weak_ptr<platform::PreviewPanelDataSource> dataSource;
    platform::Sender sender = nullptr;
    bool isVisible = false;
    /// The items as they were when they were last asked for.
    std::vector<platform::URL> items;

    void setDelegate(std::weak_ptr<platform::PreviewPanelDelegate> given) override {
        note("setDelegate");
        delegate = std::move(given);
    }
    void setDataSource(std::weak_ptr<platform::PreviewPanelDataSource> given) override {
        note("setDataSource");
        dataSource = std::move(given);
    }
    void makeKeyAndOrderFront(platform::Sender given) override {
        note("makeKeyAndOrderFront");
        sender = given;
        isVisible = true;
        askDataSource();
    }

    /// Asks for the items anew. There are none without a data source.
    void askDataSource() {
        items.clear();
        const auto source = dataSource.lock();
        const std::size_t count = source ? source->numberOfPreviewItemsInPreviewPanel(*this) : 0;
        for (std::size_t index = 0; index < count; ++index) {
            items.push_back(source->previewPanel(*this, index));
        }
    }
};

class ScriptedPreviewPanels final : public platform::PreviewPanels, public LoggingService {
public:
    explicit ScriptedPreviewPanels(CallLog& log)
        : LoggingService(log)
        , panel(std::make_shared<ScriptedPreviewPanel>(log)) {}

    std::shared_ptr<ScriptedPreviewPanel> panel;
    /// False simulates a system without the panel.
    bool available = true;

    std::shared_ptr<platform::PreviewPanel> sharedPreviewPanel() override {
        note("sharedPreviewPanel");
        return available ? panel : nullptr;
    }
};

class ScriptedAppleScripts final : public platform::AppleScripts, public LoggingService {
public:
    using LoggingService::LoggingService;

    /// False makes every text an invalid script.
    bool givesScripts = true;
    /// If set, running a script fails with this.
    std::optional<platform::Error> failure;

    std::unique_ptr<platform::AppleScript> initWithSource(std::string_view source) override {
        note("initWithSource " + std::string(source));
        return givesScripts ? std::make_unique<Script>(*this) : nullptr;
    }

private:
    class Script final : public platform::AppleScript {
    public:
        explicit Script(const ScriptedAppleScripts& scripts) : scripts_(scripts) {}

        platform::Result<void> executeAndReturnError() override {
            scripts_.note("execute");
            if (scripts_.failure) {
                return std::unexpected(*scripts_.failure);
            }
            return {};
        }

    private:
        const ScriptedAppleScripts& scripts_;
    };
};

} // namespace tolvane::tests
