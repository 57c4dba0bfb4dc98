#include "platform/linux/session/LinuxUserSession.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::platform {

TEST(LocaleName, leavesOutTheCodeset) {
    EXPECT_EQ(icuLocaleName("de_DE.UTF-8"), "de_DE");
    EXPECT_EQ(icuLocaleName("en_US"), "en_US");
    EXPECT_EQ(icuLocaleName("ja.eucJP"), "ja");
}

TEST(LocaleName, takesPlainLocalesForPosix) {
    for (const auto* name : {"", "C", "POSIX", "C.UTF-8", "POSIX.utf8", "C@euro", ".UTF-8", "@"}) {
        EXPECT_EQ(icuLocaleName(name), "en_US_POSIX") << name;
    }
}

TEST(LocaleName, takesWhatNoLocaleIsCalledForPosix) {
    for (const auto& name :
         {std::string("\xFF\xFE"), std::string("en US"), std::string("en;US"), std::string("../en"),
          std::string("languages_US"), std::string(10'000, 'x'), std::string(10'000, '_')}) {
        EXPECT_EQ(icuLocaleName(name), "en_US_POSIX") << name.substr(0, 20);
    }
    EXPECT_EQ(icuLocaleName("zh-Hant_TW"), "zh-Hant_TW");
}

TEST(LocaleName, leavesOutModifiersThatSayNothingAboutDates) {
    EXPECT_EQ(icuLocaleName("de_DE.UTF-8@euro"), "de_DE");
    EXPECT_EQ(icuLocaleName("de_DE@euro"), "de_DE");
    EXPECT_EQ(icuLocaleName("de_DE@"), "de_DE");
}

TEST(LocaleName, makesScriptsOfModifiers) {
    EXPECT_EQ(icuLocaleName("sr_RS@latin"), "sr_Latn_RS");
    EXPECT_EQ(icuLocaleName("sr_RS.UTF-8@latin"), "sr_Latn_RS");
    EXPECT_EQ(icuLocaleName("uz_UZ@cyrillic"), "uz_Cyrl_UZ");
    EXPECT_EQ(icuLocaleName("sr@latin"), "sr_Latn");
}

TEST(LocaleName, knowsTheValencianVariant) {
    EXPECT_EQ(icuLocaleName("ca_ES.UTF-8@valencia"), "ca_ES_VALENCIA");
}

} // namespace tolvane::platform
