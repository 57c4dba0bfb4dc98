#include "tests/hostile/LostFacts.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace tolvane::tests {

Fields withoutAttributeSizes(Fields fields) {
    fields["xattrSize"] = "0";
    return withoutDictionary(std::move(fields));
}

Fields withoutDictionary(Fields fields) {
    fields["filemanSize"] = "0";
    fields["filemanTotalSize"] = fields["xattrSize"];
    for (const char* field : dictionaryFields) {
        fields[field] = "";
    }
    return fields;
}

Fields withoutBookmark(Fields fields) {
    fields["bookmarkTextbox"] = "";
    return withoutResolution(std::move(fields));
}

Fields withoutResolution(Fields fields) {
    fields["bookmarkPathTextbox"] = noBookmarkText;
    return fields;
}

void expectFields(const Fields& seen, const Fields& expected) {
    for (const auto& [name, text] : expected) {
        EXPECT_EQ(seen.at(name), text) << name << " of " << seen.at("pathTextbox");
    }
}

} // namespace tolvane::tests
