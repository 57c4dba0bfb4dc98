#pragma once

#include "details/AttributeRows.h"
#include "platform/model/Controls.h"
#include "platform/model/Table.h"
#include "platform/services/BackgroundTasks.h"
#include "platform/services/UserDefaults.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::details {

/// What the page "In words" needs of the platform. The referenced objects outlive the pages.
struct WordSources {
    ExplanationSources explanations;
    /// The same contents as above, for work that may outlive the page.
    std::shared_ptr<const platform::FileContents> sharedContents;
    platform::BackgroundTasks* tasks = nullptr; ///< Without it checksums cannot be verified.
};

/// The page of the details window that says in words what the extended attributes mean: a table of
/// `AttributeRows`, and all that the selected row says. Nothing is read while the page is not shown.
class AttributeWords {
public:
    /// The controls outlive the page.
    struct Controls {
        platform::Table& table;
        platform::TextView& text;
        platform::Button& inWords; ///< Whether the page is shown; kept in the user's settings.
        platform::Button& bytes;   ///< Whether the value's bytes follow its explanation.
    };

    AttributeWords(const Controls& controls, WordSources sources, platform::UserDefaults& defaults);
    AttributeWords(const AttributeWords&) = delete;
    AttributeWords& operator=(const AttributeWords&) = delete;
    ~AttributeWords() = default;

    /// Shows another item, or what the same has become. A verification that is going on ends.
    void setItem(const platform::URL& url, const platform::Dictionary& attributes, double fontSize);

    /// In points.
    void setFontSize(double size);

    bool canVerify() const;
    bool isVerifying() const { return static_cast<bool>(verification_); }
    /// Reads the item's content and shows whether it fits the checksums in attributes.
    void verify();
    void stopVerification();

private:
    void load();
    std::string checksumsText() const;
    void showSelected();
    void showProgress(std::string progress);

    Controls controls_;
    WordSources sources_;
    platform::UserDefaults& defaults_;
    double fontSize_ = 0;
    std::optional<platform::URL> url_;
    platform::Dictionary attributes_;
    std::shared_ptr<const AttributeRows> rows_; ///< Null until the page is shown.
    std::vector<verification::Verified> verified_;
    std::string progress_; ///< A line about the verification.
    std::unique_ptr<platform::BackgroundTask> verification_;
    platform::Subscription page_;
    platform::Subscription selection_;
    platform::Subscription bytes_;
};

} // namespace tolvane::details
