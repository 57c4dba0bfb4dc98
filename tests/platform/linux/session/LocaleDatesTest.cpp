#include "platform/linux/session/LocaleDates.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace tolvane::platform {

using namespace std::string_literals;

TEST(LocaleName, leavesOutTheCodesetAndKeepsOnlyModifiersForScriptsAndVariants) {
    const std::map<std::string, std::string> names{
        {"de_DE.UTF-8", "de_DE"},
        {"en_US", "en_US"},
        {"ja.eucJP", "ja"},
        {"zh-Hant_TW", "zh-Hant_TW"},
        {"de_DE.UTF-8@euro", "de_DE"},
        {"de_DE@euro", "de_DE"},
        {"de_DE@", "de_DE"},
        {"sr_RS@latin", "sr_Latn_RS"},
        {"sr_RS.UTF-8@latin", "sr_Latn_RS"},
        {"uz_UZ@cyrillic", "uz_Cyrl_UZ"},
        {"sr@latin", "sr_Latn"},
        {"ca_ES.UTF-8@valencia", "ca_ES_VALENCIA"}};
    for (const auto& [name, expected] : names) {
        EXPECT_EQ(icuLocaleName(name), expected) << name;
    }
}

TEST(LocaleName, takesPlainLocalesAndInvalidNamesForPosix) {
    for (const std::string& name :
         {""s, "C"s, "POSIX"s, "C.UTF-8"s, "POSIX.utf8"s, "C@euro"s, ".UTF-8"s, "@"s, "\xFF\xFE"s, "en US"s,
          "en;US"s, "../en"s, "languages_US"s, std::string(10'000, 'x'), std::string(10'000, '_')}) {
        EXPECT_EQ(icuLocaleName(name), "en_US_POSIX") << name.substr(0, 20);
    }
}

} // namespace tolvane::platform
