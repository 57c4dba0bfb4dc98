// What the program has to report for an item whose facts are known from elsewhere.
#pragma once

#include "tests/oracle/Oracle.h"
#include "tests/oracle/ReportText.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace tolvane::tests {

/// The texts of all fields but the title, the date and the bookmark (see BookmarkOracle.h); of the type only
/// what comes before its colon.
Fields expectedFields(const std::string& path, const ItemFacts& facts);

/// The typed facts of the JSON report, dates as ISO 8601 alone, but for those in `factsToldByTexts`.
nlohmann::json expectedFacts(const std::string& path, const ItemFacts& facts);

/// The typed facts that follow from the texts of the same report: "title", "typeIdentifier", "bookmark" and
/// "bookmarkPath".
nlohmann::json factsToldByTexts(const std::string& path, const Fields& texts);

/// Lower-case hexadecimal digits.
std::string hexText(const std::string& bytes);

/// The fields of a JSON report and of a text report as expectedFields has them: the type is cut at its colon
/// (nothing stays of one that has nothing behind it), title, date and bookmark are left out.
Fields comparable(Fields fields);

} // namespace tolvane::tests
