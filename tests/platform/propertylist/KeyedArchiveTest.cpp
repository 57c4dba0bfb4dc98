#include "platform/propertylist/KeyedArchive.h"

#include "tests/support/ScriptedSources.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

using namespace tests;

Value uid(std::int64_t number) {
    return Dictionary{{"CF$UID", number}};
}

Value classNamed(std::string_view name) {
    return Dictionary{{"$classname", name}, {"$classes", Array{name, "NSObject"}}};
}

/// An archive whose root is the object with number 1; number 0 is the null object.
Value archiveOf(Array objects) {
    objects.insert(objects.begin(), "$null");
    return Dictionary{
        {"$archiver", "NSKeyedArchiver"},
        {"$version", std::int64_t{100'000}},
        {"$top", Dictionary{{"root", uid(1)}}},
        {"$objects", std::move(objects)}};
}

Value rootOf(const Value& archive) {
    const auto objects = unarchivedObjects(archive);
    const Value* const root = objects ? objects->top.find("root") : nullptr;
    return root == nullptr ? Value("no root") : *root;
}

TEST(KeyedArchive, givesArraysAndDictionariesAsValues) {
    const Value archive = archiveOf(
        {Dictionary{
             {"NS.keys", Array{uid(2), uid(3)}}, {"NS.objects", Array{uid(4), uid(5)}}, {"$class", uid(6)}},
         "items", "count", Dictionary{{"NS.objects", Array{uid(2), uid(0), uid(3)}}, {"$class", uid(7)}},
         std::int64_t{2}, classNamed("NSDictionary"), classNamed("NSArray")});
    EXPECT_EQ(
        rootOf(archive),
        Value(Dictionary{{"items", Array{"items", Null(), "count"}}, {"count", std::int64_t{2}}}));
}

TEST(KeyedArchive, givesTheSystemsObjectsAsTheirValues) {
    const Data bytes = bytesOf("0123456789abcdef");
    UUID uuid;
    std::ranges::copy(bytes, uuid.bytes.begin());
    const Value archive = archiveOf(
        {Dictionary{
             {"NS.objects", Array{uid(2), uid(3), uid(4), uid(5), uid(6), uid(7)}}, {"$class", uid(8)}},
         Dictionary{{"NS.string", "text"}, {"$class", uid(8)}},
         Dictionary{{"NS.data", bytes}, {"$class", uid(8)}},
         Dictionary{{"NS.time", 12.5}, {"$class", uid(8)}},
         Dictionary{{"NS.uuidbytes", bytes}, {"$class", uid(8)}},
         Dictionary{{"NS.base", uid(0)}, {"NS.relative", uid(9)}, {"$class", uid(8)}},
         Dictionary{{"NS.base", uid(6)}, {"NS.relative", "part"}, {"$class", uid(8)}}, classNamed("X"),
         "file:///a/"});
    EXPECT_EQ(
        rootOf(archive), Value(Array{"text", bytes, Date(12.5), uuid, "file:///a/", "part -- file:///a/"}));
}

TEST(KeyedArchive, givesOtherObjectsAsDictionariesWithTheirClass) {
    const Value archive = archiveOf(
        {Dictionary{{"data", uid(3)}, {"hidden", true}, {"$class", uid(2)}}, classNamed("Bookmark"),
         bytesOf("book")});
    EXPECT_EQ(
        rootOf(archive),
        Value(Dictionary{{"$class", "Bookmark"}, {"data", bytesOf("book")}, {"hidden", true}}));
}

TEST(KeyedArchive, keepsObjectsOfUnexpectedShapeAsTheyAre) {
    const Dictionary uneven{{"NS.keys", Array{"a"}}, {"NS.objects", Array{}}};
    EXPECT_EQ(rootOf(archiveOf({uneven})), Value(uneven));
    const Dictionary wrongTime{{"NS.time", "noon"}};
    EXPECT_EQ(rootOf(archiveOf({wrongTime})), Value(wrongTime));
    const Dictionary shortIdentifier{{"NS.uuidbytes", Data(3)}};
    EXPECT_EQ(rootOf(archiveOf({shortIdentifier})), Value(shortIdentifier));
    const Dictionary more{{"NS.objects", Array{}}, {"more", true}};
    EXPECT_EQ(rootOf(archiveOf({more})), Value(more));
}

TEST(KeyedArchive, writesKeysThatAreNotTextsAsTexts) {
    UUID uuid;
    const Value archive = archiveOf(
        {Dictionary{
             {"NS.keys", Array{uid(2), std::int64_t{501}, true}}, {"NS.objects", Array{"a", "b", "c"}}},
         Dictionary{{"NS.uuidbytes", Data(16)}}});
    EXPECT_EQ(rootOf(archive), Value(Dictionary{{uuid.text(), "a"}, {"501", "b"}, {"$2", "c"}}));
}

TEST(KeyedArchive, leavesReferencesToTheirOwnContainer) {
    const Value archive = archiveOf(
        {Dictionary{{"items", uid(2)}}, Dictionary{{"NS.objects", Array{uid(3)}}},
         Dictionary{{"container", uid(1)}, {"self", uid(3)}}});
    const auto objects = unarchivedObjects(archive);
    ASSERT_TRUE(objects);
    EXPECT_EQ(objects->cyclic, 2U);
    EXPECT_EQ(
        *objects->top.find("root"),
        Value(Dictionary{{"items", Array{Dictionary{{"container", uid(1)}, {"self", uid(3)}}}}}));
}

TEST(KeyedArchive, leavesReferencesToMissingObjects) {
    const auto objects = unarchivedObjects(archiveOf({Array{uid(2), uid(99), Dictionary{{"CF$UID", "1"}}}}));
    ASSERT_TRUE(objects);
    EXPECT_EQ(objects->missing, 2U);
    EXPECT_EQ(*objects->top.find("root"), Value(Array{uid(2), uid(99), Dictionary{{"CF$UID", "1"}}}));
}

TEST(KeyedArchive, copiesAnObjectWhereverItIsReferredTo) {
    const Value archive = archiveOf({Array{uid(2), uid(2)}, bytesOf("book")});
    EXPECT_EQ(rootOf(archive), Value(Array{bytesOf("book"), bytesOf("book")}));
}

TEST(KeyedArchive, isCutOffBelowALimit) {
    Array objects;
    for (std::int64_t i = 0; i < 1000; ++i) {
        objects.push_back(Dictionary{{"next", uid(i + 2)}});
    }
    objects.push_back("end");
    const auto unarchived = unarchivedObjects(archiveOf(std::move(objects)));
    ASSERT_TRUE(unarchived);
    EXPECT_EQ(unarchived->leftOut, 1U);
    const Value* value = unarchived->top.find("root");
    unsigned depth = 0;
    for (; value->as<Dictionary>()->find("next") != nullptr; ++depth) {
        value = value->as<Dictionary>()->find("next");
    }
    EXPECT_EQ(depth, deepestArchivedObject);
    EXPECT_EQ(*value, uid(deepestArchivedObject + 1));
}

TEST(KeyedArchive, thatSharesWithoutEndIsCutOff) {
    Array objects;
    for (std::int64_t i = 0; i < 60; ++i) {
        objects.push_back(Array{uid(i + 2), uid(i + 2)});
    }
    objects.push_back(Data(1000));
    const auto unarchived = unarchivedObjects(archiveOf(std::move(objects)));
    ASSERT_TRUE(unarchived);
    EXPECT_GT(unarchived->leftOut, 0U);
}

TEST(KeyedArchive, isNotAnyList) {
    EXPECT_FALSE(unarchivedObjects("text"));
    EXPECT_FALSE(unarchivedObjects(Dictionary{{"$objects", Array{}}}));
    EXPECT_FALSE(unarchivedObjects(Dictionary{{"$objects", Array{}}, {"$top", "root"}}));
    EXPECT_FALSE(unarchivedObjects(Dictionary{{"$objects", Array{}}, {"$top", uid(1)}}));
    EXPECT_FALSE(unarchivedObjects(Dictionary{{"$objects", "none"}, {"$top", Dictionary{}}}));
    EXPECT_TRUE(unarchivedObjects(Dictionary{{"$objects", Array{}}, {"$top", Dictionary{}}}));
}

} // namespace
} // namespace tolvane::platform
