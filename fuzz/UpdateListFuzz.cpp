// Takes any bytes for the update list: counts, reads, describes it, and goes through its entries.
//
// A list of another shape ends the program on purpose, so the walk is taken only where the shape is as
// `UpdateCheck.h` wants it, which is looked at here first, in words of its own: a fatal stop is then a
// finding.
#include "app/UpdateCheck.h"
#include "fuzz/Fuzz.h"
#include "platform/Description.h"
#include "platform/Menu.h"
#include "platform/Utf8.h"
#include "platform/qt/network/PropertyListBounds.h"
#include "platform/qt/network/QtPropertyLists.h"

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

/// What a list holds, however deep.
struct Counted {
    std::size_t elements = 0;
    std::size_t containers = 0;
    std::size_t bytes = 0;
    std::size_t deepest = 0;

    void add(const platform::Value& value, std::size_t level) {
        ++elements;
        deepest = std::max(deepest, level);
        if (const auto* const text = value.as<std::string>()) {
            bytes += text->size();
        } else if (const auto* const data = value.as<platform::Data>()) {
            bytes += data->size();
        } else if (const auto* const array = value.as<platform::Array>()) {
            ++containers;
            for (const platform::Value& element : *array) {
                add(element, level + 1);
            }
        } else if (const auto* const dictionary = value.as<platform::Dictionary>()) {
            ++containers;
            for (const auto& [key, element] : *dictionary) {
                bytes += key.size();
                add(element, level + 1);
            }
        }
    }
};

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

std::shared_ptr<app::UpdateCheck> checkFor(Desktop& desktop, const platform::QtPropertyLists& lists) {
    return app::UpdateCheck::make(
        {desktop, desktop, desktop, desktop, desktop, desktop, desktop, desktop, lists},
        {.support = {},
         .updatesElCapitan = {},
         .updatesSierra = {},
         .updateList = "https://tolvane.example/list",
         .downloadPrefix = std::string(downloadPrefix)});
}

/// What is not sent as a list is not looked at, whatever it is.
void leaveAlone(const platform::Data& bytes, const platform::QtPropertyLists& lists) {
    for (const platform::URLResponse& response :
         {platform::URLResponse{404, "text/xml"}, platform::URLResponse{200, "text/html"},
          platform::URLResponse{std::nullopt, "text/xml"}}) {
        Desktop desktop({}, bytes, response);
        const auto check = checkFor(desktop, lists);
        check->schedule();
        desktop.check();
        fuzz::require(desktop.alerts() == 0, "nothing is told of what is no list");
    }
}

void goThrough(const platform::Data& bytes, const platform::QtPropertyLists& lists) {
    const auto list = lists.propertyListWithData(bytes);
    const auto offered = list ? offeredBy(*list) : std::vector<std::string>();
    if (!offered) {
        return;
    }
    const platform::URLResponse response{200, "text/xml"};
    Desktop desktop(*offered, bytes, response);
    checkFor(desktop, lists)->schedule();
    desktop.check();
    const bool isEmpty = !list || list->as<platform::Array>()->empty();
    fuzz::require(desktop.errors() == (isEmpty ? 1U : 0U), "an error is told where there is one");
    fuzz::require(desktop.alerts() == offered->size() + desktop.errors(), "one alert for each offer");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const platform::QtPropertyLists lists;
    const auto bytes = fuzz::bytesOf(data, size);
    const auto list = lists.propertyListWithData(bytes);
    if (list) {
        fuzz::require(platform::isPropertyListWithinBounds(bytes), "what is read was within the bounds");
        Counted counted;
        counted.add(*list, 0);
        const bool isBinary = platform::isBinaryPropertyList(bytes);
        constexpr std::size_t mostLeafBytes = std::size_t{64} << 20U;
        fuzz::require(counted.elements <= 200'001 && counted.containers <= 10'000, "a list has its limits");
        fuzz::require(counted.deepest <= 513, "a list is not nested deeper than is safe");
        fuzz::require(counted.bytes <= (isBinary ? mostLeafBytes : 4 * size), "texts have their limits");
        const std::string description = platform::description(*list);
        fuzz::require(platform::isValidUtf8(description), "a described list is UTF-8");
        const auto again = lists.propertyListWithData(bytes);
        fuzz::require(again && platform::description(*again) == description, "the same bytes, the same list");
    } else {
        fuzz::require(!list.error().localizedDescription().empty(), "a failure has its sentence");
    }
    goThrough({bytes.begin(), bytes.end()}, lists);
    leaveAlone({bytes.begin(), bytes.end()}, lists);
    return 0;
}
