// Takes any bytes for the update list and goes through its entries.
//
// A list of another shape ends the program on purpose, so the walk is taken only where the shape is as
// `UpdateCheck.h` wants it, which is looked at here first, in words of its own: a fatal stop is then a
// finding.
#include "app/UpdateCheck.h"
#include "fuzz/Fuzz.h"
#include "platform/model/Menu.h"
#include "platform/propertylist/PropertyList.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tolvane;

const std::string runningVersion = "1.0"; // NOLINT(bugprone-throwing-static-initialization)
constexpr std::string_view downloadPrefix = "https://tolvane.example/downloads/";

const std::string* textIn(const platform::Dictionary& entry, std::string_view key) {
    const platform::Value* const value = entry.find(key);
    return value == nullptr ? nullptr : value->as<std::string>();
}

bool canBeAnAddress(std::string_view text) {
    return platform::URL::fromText(text) && std::ranges::all_of(text, [](char c) {
               return c > ' ' && c < '\x7F' && !std::string_view("\"<>\\^`{|}").contains(c);
           });
}

/// The addresses that a list offers, in order; nothing when the list is not of the right shape.
std::optional<std::vector<std::string>> offeredBy(const platform::Value& list) {
    const auto* const entries = list.as<platform::Array>();
    if (entries == nullptr) {
        return std::nullopt;
    }
    std::vector<std::string> offered;
    for (const platform::Value& value : *entries) {
        const auto* const entry = value.as<platform::Dictionary>();
        const std::string* const name = entry == nullptr ? nullptr : textIn(*entry, "AppName");
        if (name == nullptr) {
            return std::nullopt;
        }
        if (*name != "Tolvane") {
            continue;
        }
        const std::string* const version = textIn(*entry, "Version");
        const std::string* const address = textIn(*entry, "URL");
        if (version == nullptr || address == nullptr) {
            return std::nullopt;
        }
        if (*version != runningVersion && address->contains(downloadPrefix)) {
            offered.push_back(*address);
        }
    }
    return offered;
}

/// All that the check asks of the platform.
class Desktop final : public platform::Bundle,
                      public platform::Application,
                      public platform::Alerts,
                      public platform::Workspace,
                      public platform::UserDefaults,
                      public platform::UserSession,
                      public platform::URLSession,
                      public platform::MainQueue {
public:
    Desktop(std::vector<std::string> offered, platform::Data body, platform::URLResponse response)
        : offered_(std::move(offered))
        , body_(std::move(body))
        , response_(std::move(response)) {
        help_.addItem("Update not checked");
    }

    const platform::Storyboard* storyboardWithName(std::string_view) const override { return nullptr; }
    const platform::Dictionary* infoDictionary() const override { return &information_; }
    void setServicesProvider(std::weak_ptr<platform::ServicesProvider>) override {}
    platform::Menu* helpMenu() override { return &help_; }
    bool boolForKey(std::string_view) const override { return false; }
    void setBool(bool, std::string_view) override {}
    double doubleForKey(std::string_view) const override { return 0; }
    void setDouble(double value, std::string_view key) override {
        if (key == "dateLastUpdateCheck") {
            fuzz::require(value == now().timeIntervalSinceReferenceDate(), "a check is noted as made now");
            ++notes_;
        }
    }
    platform::Date now() const override { return platform::Date(700'000'000); }
    platform::URL homeDirectory() const override { return platform::URL::fileURLWithPath("/"); }
    std::string describeForLocale(const platform::Date& date) const override { return date.description(); }

    /// Answers at once.
    std::shared_ptr<platform::URLSessionDataTask> dataTaskWithURL(
        const platform::URL&, platform::DataTaskCompletionHandler handler) override {
        return std::make_shared<Task>(
            [this, handler = std::move(handler)] { handler(body_, response_, {}); });
    }
    void async(std::function<void()> work) override { work(); }

    /// Downloads whatever has an address.
    std::size_t runModal(const platform::Alert& alert) override {
        ++alerts_;
        if (alert.buttons.size() == 1) {
            ++errors_;
            return 0;
        }
        fuzz::require(offer_ < offered_.size(), "only what is offered is asked about");
        const std::string& address = offered_[offer_++];
        return canBeAnAddress(address) ? 1 : 0;
    }

    bool openURL(const platform::URL& url) override {
        fuzz::require(
            offer_ > 0 && url.absoluteString() == offered_[offer_ - 1], "what was chosen is opened");
        fuzz::require(url.absoluteString().contains(downloadPrefix), "and is a download of the product");
        ++opened_;
        return true;
    }

    void check() const {
        const auto wanted = static_cast<std::size_t>(std::ranges::count_if(offered_, canBeAnAddress));
        fuzz::require(
            offer_ == offered_.size() && opened_ == wanted, "every offer is made, every choice kept");
        fuzz::require(notes_ == 1, "every check is noted, whatever it brought");
    }
    std::size_t alerts() const { return alerts_; }
    std::size_t errors() const { return errors_; }

private:
    class Task final : public platform::URLSessionDataTask {
    public:
        explicit Task(std::function<void()> answer) : answer_(std::move(answer)) {}
        void resume() override { answer_(); }

    private:
        std::function<void()> answer_;
    };

    const platform::Dictionary information_{
        {std::string(platform::CFBundleShortVersionString), runningVersion}};
    std::vector<std::string> offered_;
    platform::Data body_;
    platform::URLResponse response_;
    platform::Menu help_;
    std::size_t notes_ = 0;
    std::size_t offer_ = 0;
    std::size_t opened_ = 0;
    std::size_t alerts_ = 0;
    std::size_t errors_ = 0;
};

std::shared_ptr<app::UpdateCheck> checkFor(Desktop& desktop) {
    return app::UpdateCheck::make(
        {desktop, desktop, desktop, desktop, desktop, desktop, desktop, desktop},
        {.support = {},
         .updatesElCapitan = {},
         .updatesSierra = {},
         .updateList = "https://tolvane.example/list",
         .downloadPrefix = std::string(downloadPrefix)});
}

/// What is not sent as a list is not looked at, whatever it is.
void leaveAlone(const platform::Data& bytes) {
    for (const platform::URLResponse& response :
         {platform::URLResponse{404, "text/xml"}, platform::URLResponse{200, "text/html"},
          platform::URLResponse{std::nullopt, "text/xml"}}) {
        Desktop desktop({}, bytes, response);
        const auto check = checkFor(desktop);
        check->schedule();
        desktop.check();
        fuzz::require(desktop.alerts() == 0, "nothing is told of what is no list");
    }
}

void goThrough(const platform::Data& bytes) {
    const auto list = platform::readPropertyList(bytes);
    const auto offered = list ? offeredBy(list->value) : std::vector<std::string>();
    if (!offered) {
        return;
    }
    const platform::URLResponse response{200, "text/xml"};
    Desktop desktop(*offered, bytes, response);
    checkFor(desktop)->schedule();
    desktop.check();
    const bool isEmpty = !list || list->value.as<platform::Array>()->empty();
    fuzz::require(desktop.errors() == (isEmpty ? 1U : 0U), "an error is told where there is one");
    fuzz::require(desktop.alerts() == offered->size() + desktop.errors(), "one alert for each offer");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = fuzz::bytesOf(data, size);
    goThrough({bytes.begin(), bytes.end()});
    leaveAlone({bytes.begin(), bytes.end()});
    return 0;
}
