// The steps of a report, recognised by the system calls.
#pragma once

#include "tests/hostile/SystemCallGate.h"
#include "tests/oracle/ReportText.h"
#include "tests/support/TemporaryFolder.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace tolvane::tests {

/// What a call is made for.
enum class Stage {
    identity,   ///< The URL's resource values: whether there is anything at the path, and what.
    forks,      ///< Those of them that come from attributes.
    attributes, ///< The sum of the attribute sizes.
    dictionary, ///< The file manager's dictionary.
    way,        ///< The first look along the path, for a bookmark.
    volumes,    ///< The facts of volumes and the home folder, for a bookmark; the second look along the path.
    resolution, ///< Where the bookmark leads to.
    date,       ///< The words of the date, and whatever comes after the item's facts.
};

struct Step {
    Stage stage;
    /// How many calls of this stage there were before.
    std::size_t index;

    friend bool operator==(const Step&, const Step&) = default;
};

/// Follows the calls of a program that reports on one item, or on that item first. The path is absolute and
/// has neither links nor a final slash.
class ReportSteps {
public:
    explicit ReportSteps(std::string path) : path_(std::move(path)) {}

    /// The step that this call is; nothing before the item is first looked at.
    std::optional<Step> next(const PendingCall& call);

private:
    Stage stageOf(const PendingCall& call) const;
    std::string path_;
    std::size_t looks_ = 0; // at the item
    std::optional<Stage> stage_;
    std::size_t index_ = 0;
};

/// A file of five bytes, and reports on it through a gate.
class GatedReport : public GateTest {
protected:
    /// The fields of a report, which has to pass the gate without a complaint.
    Fields reportThrough(const Gate& gate) const;

    TemporaryFolder folder;
    std::string item = std::filesystem::canonical(folder.file("item.txt", "words")).string();
};

/// The same with two attributes, "user.a" of two bytes and "user.b" of three.
class GatedReportOfAttributes : public GatedReport {
protected:
    void SetUp() override;
};

} // namespace tolvane::tests
