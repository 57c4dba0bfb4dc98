#include "attributes/AttributeName.h"

#include <gtest/gtest.h>

namespace tolvane::attributes {
namespace {

std::string knownName(std::string_view name) {
    return attributeName(name).known;
}

TEST(AttributeName, staysWhatItIsWhereNothingIsPutAroundIt) {
    for (const char* const name :
         {"user.xdg.tags", "security.selinux", "com.apple.quarantine", "user.kde.fm.viewproperties#1",
          "user.com", "user.comment", "system.posix_acl_access", "", "user.", "#", "a#", "user.x#PS"}) {
        EXPECT_EQ(knownName(name), name);
        EXPECT_FALSE(attributeName(name).isStream);
        EXPECT_EQ(attributeName(name).flags, "");
    }
}

TEST(AttributeName, losesTheLinuxPrefixOfAMacsName) {
    EXPECT_EQ(knownName("user.com.apple.quarantine"), "com.apple.quarantine");
    EXPECT_EQ(knownName("osx.com.apple.quarantine"), "com.apple.quarantine");
    EXPECT_EQ(knownName("osx.rsync.%stat"), "rsync.%stat");
    EXPECT_EQ(knownName("user.com.dropbox.attrs"), "com.dropbox.attrs");
    EXPECT_EQ(knownName("user.user.com.apple.quarantine"), "user.user.com.apple.quarantine");
}

TEST(AttributeName, losesWhatSambaPutsAroundAStream) {
    const AttributeName name = attributeName("user.DosStream.com.apple.quarantine:$DATA");
    EXPECT_EQ(name.known, "com.apple.quarantine");
    EXPECT_TRUE(name.isStream);
    EXPECT_EQ(knownName("user.DosStream.AFP_AfpInfo"), "AFP_AfpInfo");
    EXPECT_FALSE(attributeName("user.DosStreamExt.0.x:$DATA").isStream);
}

TEST(AttributeName, getsBackTheCharactersThatClientsMapOrLose) {
    EXPECT_EQ(
        knownName("user.DosStream.com.apple.metadata\xEF\x80\xA2_kMDItemUserTags:$DATA"),
        "com.apple.metadata:_kMDItemUserTags");
    EXPECT_EQ(knownName("com.apple.metadata_kMDItemUserTags"), "com.apple.metadata:_kMDItemUserTags");
    EXPECT_EQ(knownName("com.apple.metadatakMDItemTitle"), "com.apple.metadata:kMDItemTitle");
    EXPECT_EQ(knownName("com.apple.metadata"), "com.apple.metadata");
    // All ten of the area, in its order, and its neighbours.
    EXPECT_EQ(
        knownName("x\xEF\x80\xA0\xEF\x80\xA1\xEF\x80\xA2\xEF\x80\xA3\xEF\x80\xA4\xEF\x80\xA5\xEF\x80\xA6\xEF"
                  "\x80\xA7"
                  "\xEF\x80\xA8\xEF\x80\xA9y\xEF\x80\x9F\xEF\x80\xAA"),
        "x\"*:<>?\\| .y\xEF\x80\x9F\xEF\x80\xAA");
    EXPECT_EQ(knownName("com.apple.\xFF#P"), "com.apple.\xFF");
}

TEST(AttributeName, givesTheFlagsAtItsEnd) {
    const AttributeName name = attributeName("user.com.apple.lastuseddate#PS");
    EXPECT_EQ(name.known, "com.apple.lastuseddate");
    EXPECT_EQ(name.flags, "PS");
    EXPECT_EQ(knownName("com.example.x#1"), "com.example.x#1");
    EXPECT_EQ(knownName("com.example.a#b#PS"), "com.example.a#b");
    EXPECT_EQ(flagLetterNames("PS"), "not exported, synchronised");
    EXPECT_EQ(flagLetterNames("Cn"), "depends on the content, not: never copied");
    EXPECT_EQ(flagLetterNames("BX"), "only in backups, only when saved");
}

} // namespace
} // namespace tolvane::attributes
