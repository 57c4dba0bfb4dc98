#pragma once

#include "containers/FindBookmarks.h"
#include "tests/support/AliasRecords.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/Bytes.h"
#include "tests/support/PropertyListWriters.h"
#include "tests/support/ScriptedSources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

/// What the tests of this folder share.
namespace tolvane::tests {

/// A bookmark of /Users/demo/note.txt.
inline platform::Data noteData() {
    return corpusData("note.bookmark");
}

inline std::optional<containers::FoundBookmarks> foundIn(std::string_view bytes) {
    return containers::findBookmarks(std::as_bytes(std::span(bytes)));
}

inline std::optional<containers::FoundBookmarks> foundIn(const platform::Data& bytes) {
    return containers::findBookmarks(bytes);
}

/// The kind of a container, and then where each finding in it is; nothing if it is none.
inline std::vector<std::string> outlineOf(const auto& bytes) {
    std::vector<std::string> outline;
    if (const auto found = foundIn(bytes)) {
        outline.emplace_back(found->container);
        for (const containers::Finding& finding : found->findings) {
            outline.push_back(finding.where);
        }
    }
    return outline;
}

/// The bookmark as text, as documents have it.
inline std::string noteBase64() {
    return base64Of(corpusText("note.bookmark"));
}

/// The only finding in a container; the test fails if there are more or none.
inline containers::Finding onlyFindingIn(const auto& bytes) {
    const auto found = foundIn(bytes);
    EXPECT_TRUE(found && found->findings.size() == 1);
    return found && !found->findings.empty() ? found->findings.front() : containers::Finding();
}

} // namespace tolvane::tests
