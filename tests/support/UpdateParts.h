/// The services of the update check, returning what a test sets.
#pragma once

#include "platform/model/Menu.h"
#include "platform/services/Alert.h"
#include "platform/services/Application.h"
#include "platform/services/MainQueue.h"
#include "platform/services/ProcessInfo.h"
#include "platform/services/URLSession.h"
#include "platform/services/Workspace.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/ScriptedSources.h"

#include <deque>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {

/// Stores the alerts instead of showing them.
class RememberedAlerts final : public platform::Alerts {
public:
    std::size_t runModal(const platform::Alert& alert) override {
        shown.push_back(alert);
        return answer;
    }
    std::vector<platform::Alert> shown;
    /// The button that answers every alert.
    std::size_t answer = 0;
};

/// An application whose Help menu has the forms' item.
class PlainApplication final : public platform::Application {
public:
    PlainApplication() { item = &menu.addItem("Update not checked"); }

    void setServicesProvider(std::weak_ptr<platform::ServicesProvider> given) override {
        provider = std::move(given);
        if (onServicesProvider) {
            onServicesProvider();
        }
    }
    platform::Menu* helpMenu() override { return hasHelpMenu ? &menu : nullptr; }

    std::weak_ptr<platform::ServicesProvider> provider;
    std::function<void()> onServicesProvider;
    platform::Menu menu;
    platform::MenuItem* item = nullptr;
    bool hasHelpMenu = true;
};

class RememberedWorkspace final : public platform::Workspace {
public:
    bool openURL(const platform::URL& url) override {
        opened.push_back(url.absoluteString());
        return answer;
    }
    std::vector<std::string> opened;
    bool answer = true;
};

/// A system whose version the test sets.
class GivenVersion final : public platform::ProcessInfo {
public:
    platform::OperatingSystemVersion operatingSystemVersion() const override { return version; }
    platform::OperatingSystemVersion version;
};

/// A queue whose work waits until the test runs it.
class WaitingMainQueue final : public platform::MainQueue {
public:
    void async(std::function<void()> work) override { waiting.push_back(std::move(work)); }

    void doAll() {
        while (!waiting.empty()) {
            const auto work = std::move(waiting.front());
            waiting.pop_front();
            work();
        }
    }
    std::deque<std::function<void()>> waiting;
};

/// A session that logs requests, for the test to complete.
class ScriptedURLSession final : public platform::URLSession, public LoggingService {
public:
    using LoggingService::LoggingService;

    std::shared_ptr<platform::URLSessionDataTask> dataTaskWithURL(
        const platform::URL& url, platform::DataTaskCompletionHandler completionHandler) override {
        return std::make_shared<Task>([this, url, handler = std::move(completionHandler)] {
            note("resume " + url.absoluteString());
            resumed.push_back(handler);
        });
    }

    std::vector<platform::DataTaskCompletionHandler> resumed;

private:
    class Task final : public platform::URLSessionDataTask {
    public:
        explicit Task(std::function<void()> work) : work_(std::move(work)) {}
        void resume() override { work_(); }

    private:
        std::function<void()> work_;
    };
};

/// Settings that log each access.
class NotedUserDefaults final : public platform::UserDefaults, public LoggingService {
public:
    using LoggingService::LoggingService;

    bool boolForKey(std::string_view key) const override {
        note("read " + std::string(key));
        return kept.boolForKey(key);
    }
    void setBool(bool value, std::string_view key) override {
        note(std::string(key) + (value ? " = true" : " = false"));
        kept.setBool(value, key);
    }
    double doubleForKey(std::string_view key) const override {
        note("read " + std::string(key));
        return kept.doubleForKey(key);
    }
    void setDouble(double value, std::string_view key) override {
        std::ostringstream text;
        text << key << " = " << value;
        note(text.str());
        kept.setDouble(value, key);
    }

    platform::MemoryUserDefaults kept;
};

} // namespace tolvane::tests
