// Containers that Macs made.
#include "tests/containers/Samples.h"
#include "tests/support/SharedSamples.h"

#include <map>

namespace tolvane::containers {
namespace {

using namespace tests;

/// A line of the table of samples.
struct ExpectedFinding {
    std::string where, kind, length, path, url, volume, uuid, created;
};

class ContainerSamples : public SharedSamples {
protected:
    ContainerSamples() : SharedSamples("carriers") {}

    std::map<std::string, std::vector<ExpectedFinding>> table() const {
        std::map<std::string, std::vector<ExpectedFinding>> rows;
        for (const auto& cells : rowsOf("VALUES.tsv", 11)) {
            rows[cells[0]].push_back(
                {cells[1], cells[2], cells[3], cells[6], cells[7], cells[8], cells[9], cells[10]});
        }
        return rows;
    }
};

/// "2022-12-12 23:13:54", as the table has dates.
std::string dateText(const Finding& finding) {
    const auto& date = finding.created ? finding.created : finding.createdLocal;
    return date ? date->description().substr(0, 19) : "";
}

/// The table numbers the bookmarks of a document, and marks joined parts in its own way.
bool isAt(const Finding& finding, std::size_t index, const std::string& where) {
    if (where.starts_with("bookmark[")) {
        return where.starts_with("bookmark[" + std::to_string(index) + "]");
    }
    return finding.where == (where == "./pBBk+pBB0..0" ? "./pBBk+pBB0" : where);
}

void expectRow(const FoundBookmarks& found, const ExpectedFinding& row) {
    SCOPED_TRACE(row.where);
    for (std::size_t i = 0; i < found.findings.size(); ++i) {
        const Finding& finding = found.findings[i];
        if (!isAt(finding, i, row.where)) {
            continue;
        }
        EXPECT_EQ(finding.kind, row.kind == "book" ? FindingKind::bookmark : FindingKind::alias);
        EXPECT_EQ(std::to_string(finding.bytes.size()), row.length);
        EXPECT_EQ(finding.path.value_or(""), row.path);
        EXPECT_EQ(finding.url.value_or(""), row.url);
        EXPECT_EQ(finding.volumeName.value_or(""), row.volume);
        EXPECT_EQ(finding.volumeUUID.value_or(""), row.kind == "book" ? row.uuid : "");
        EXPECT_EQ(dateText(finding), row.created);
        return;
    }
    ADD_FAILURE() << "not found";
}

/// Both lines of an item of the Trash: the folder, and the name.
void expectOrigin(const FoundBookmarks& found, const ExpectedFinding& row) {
    const std::string item = row.where.substr(0, row.where.rfind('/'));
    for (const Finding& finding : found.findings) {
        if (finding.neighbour == item) {
            if (row.where.ends_with("/ptbN")) {
                EXPECT_EQ(finding.name, row.path) << row.where;
            } else {
                const std::string between = row.path.empty() || row.path.ends_with('/') ? "" : "/";
                EXPECT_EQ(finding.path, row.path + between + finding.name.value_or("")) << row.where;
            }
            return;
        }
    }
    ADD_FAILURE() << row.where << " not found";
}

TEST_F(ContainerSamples, haveTheFindingsOfTheirTableAndNoOthers) {
    std::size_t rows = 0;
    for (const auto& [name, expected] : table()) {
        SCOPED_TRACE(name);
        const auto found = foundIn(text(name));
        ASSERT_TRUE(found);
        std::size_t bookmarks = 0;
        std::size_t origins = 0;
        for (const ExpectedFinding& row : expected) {
            ++rows;
            if (row.kind == "book" || row.kind.starts_with("alias")) {
                ++bookmarks;
                expectRow(*found, row);
            } else if (row.kind == "text") {
                ++origins;
                expectOrigin(*found, row);
            } else if (row.kind == "BAD book") {
                ++bookmarks;
                ASSERT_EQ(found->findings.size(), 1U);
                EXPECT_EQ(found->findings[0].where, row.where);
                EXPECT_FALSE(found->findings[0].isReadable);
            }
        }
        const auto countOf = [&](FindingKind kind) {
            return static_cast<std::size_t>(std::ranges::count(found->findings, kind, &Finding::kind));
        };
        EXPECT_EQ(countOf(FindingKind::bookmark) + countOf(FindingKind::alias), bookmarks);
        EXPECT_EQ(2 * countOf(FindingKind::origin), origins);
        EXPECT_TRUE(found->complaints.empty());
    }
    EXPECT_EQ(rows, 781U);
}

TEST_F(ContainerSamples, agreeWithTheirNeighbours) {
    for (const auto* const name :
         {"dock-plist/Velocidex-velociraptor--com.apple.dock.plist",
          "fcpxml/orchetect-DAWFileKit--Complex.fcpxml"}) {
        const auto found = foundIn(text(name));
        ASSERT_TRUE(found) << name;
        for (const Finding& finding : found->findings) {
            EXPECT_EQ(finding.mismatch, false) << finding.where;
        }
    }
}

} // namespace
} // namespace tolvane::containers
