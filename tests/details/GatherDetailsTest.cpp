#include "platform/WindowController.h"
#include "tests/support/DetailsWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <map>
#include <string>
#include <variant>

namespace tolvane::tests {
namespace {

using platform::Dictionary;
using platform::Value;

class GatherDetailsTest : public testing::Test {
protected:
    void setAttribute(std::string_view key, Value value) {
        details.fileManager.answer->set(key, std::move(value));
    }

    void removeAttribute(std::string_view key) {
        Dictionary rest;
        for (const auto& entry : *details.fileManager.answer) {
            if (entry.key != key) {
                rest.set(entry.key, entry.value);
            }
        }
        details.fileManager.answer = rest;
    }

    /// The texts of all one-line fields by outlet name.
    std::map<std::string, std::string> fieldTexts() const {
        std::map<std::string, std::string> texts;
        for (const auto& entry : details.controller().outlets().entries()) {
            if (const auto* field = std::get_if<platform::Outlet<platform::TextField>*>(&entry.outlet)) {
                texts[std::string(entry.name)] = (**field)->stringValue();
            }
        }
        return texts;
    }

    DetailsWindow details;
};

using GatherDetailsDeathTest = GatherDetailsTest;

TEST_F(GatherDetailsTest, fillsEveryFieldInOnePass) {
    details.open();
    const std::map<std::string, std::string> expected{
        {"pathTextbox", "/data/notes.txt"},
        {"volfsPathTextbox", "/.vol/2049/131077"},
        {"frURLTextbox", "file:///.file/id=72340172838076673.72340172838076673"},
        {"urlTotalSize", "1300"},
        {"urlDataSize", "1000"},
        {"urlXattrSize", "300"},
        {"xattrSize", "5"},
        {"filemanSize", "1001"},
        {"filemanTotalSize", "1006"},
        {"permsTextbox", "644"},
        {"ownerNameTextbox", "demo"},
        {"ownerIDTextbox", "1000"},
        {"groupNameTextbox", "staff"},
        {"groupIDTextbox", "50"},
        {"createdTextbox", "2001-01-01 00:00:00 +0000"},
        {"modifiedTextbox", "2024-08-09 18:27:02 +0000"},
        {"typeTextbox", "NSFileTypeRegular: public.plain-text"},
        {"refCountTextbox", "2"},
        {"bookmarkPathTextbox", "/data/notes.txt"},
    };
    EXPECT_EQ(fieldTexts(), expected);
    EXPECT_EQ(details.bookmarkText(), "Ym9va21hcms=");
    EXPECT_EQ(
        details.attributesText(),
        "NSFileExtendedAttributes : {\n    \"user.note\" = <68656c6c 6f>;\n    \"user.x\" = <>;\n}\n");
    EXPECT_EQ(details.controller().theDate(), platform::Date(0));
}

TEST_F(GatherDetailsTest, becomesTheWindowsDelegate) {
    details.open();
    EXPECT_EQ(details.window().delegate(), details.sharedController());
    details.window().setDelegate({});
    details.showAgain();
    EXPECT_EQ(details.window().delegate(), details.sharedController());
}

TEST_F(GatherDetailsTest, asksForTypeIdentityAndBookmarkInThatOrder) {
    details.open();
    const CallLog afterMeasuring(details.log.end() - 4, details.log.end());
    EXPECT_THAT(
        afterMeasuring,
        testing::ElementsAre(
            "resourceValues NSURLTypeIdentifierKey", "resourceValues NSURLFileResourceIdentifierKey",
            "bookmarkData /data/notes.txt", "resolve"));
}

TEST_F(GatherDetailsTest, leavesTheAttributesTextEmptyWithoutTheEntry) {
    removeAttribute("NSFileExtendedAttributes");
    details.open();
    EXPECT_EQ(details.attributesText(), "");
}

TEST_F(GatherDetailsTest, appendsTheAttributesAgainAtEachAppearance) {
    details.open();
    const std::string once = details.attributesText();
    details.showAgain();
    EXPECT_EQ(details.attributesText(), once + once);
    EXPECT_EQ(details.controller().theDate(), platform::Date(1));
}

TEST_F(GatherDetailsTest, describesWhateverTheAttributesEntryHolds) {
    setAttribute("NSFileExtendedAttributes", "a text");
    details.open();
    EXPECT_EQ(details.attributesText(), "NSFileExtendedAttributes : a text\n");
}

TEST_F(GatherDetailsTest, writesTheAttributesInTheOutputStyle) {
    details.defaults.setDouble(17, "fontSize");
    details.open();
    const auto& runs = details.controller().inodeText->textStorage()->attributedString().runs();
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs.front().attributes.foregroundColor, platform::Color::textColor);
    EXPECT_EQ(runs.front().attributes.font, platform::Font::systemFontOfSize(17));
}

TEST_F(GatherDetailsTest, showsPermissionsInOctalWithoutPrefix) {
    const std::map<std::int64_t, std::string> cases{{420, "644"}, {493, "755"},          {0, "0"},
                                                    {8, "10"},    {07777, "7777"},       {-1, "37777777777"},
                                                    {1, "1"},     {0x1'0000'01A4, "644"}};
    details.open();
    for (const auto& [bits, shown] : cases) {
        setAttribute("NSFilePosixPermissions", bits);
        DetailsWindow another;
        another.fileManager.answer = details.fileManager.answer;
        another.open();
        EXPECT_EQ(another.controller().permsTextbox->stringValue(), shown) << bits;
    }
}

TEST_F(GatherDetailsTest, readsIDsAsUnsigned32BitNumbers) {
    setAttribute("NSFileOwnerAccountID", std::int32_t{-2});
    setAttribute("NSFileGroupOwnerAccountID", std::int64_t{0x1'0000'0005});
    setAttribute("NSFileReferenceCount", 3.9);
    details.open();
    EXPECT_EQ(details.controller().ownerIDTextbox->stringValue(), "4294967294");
    EXPECT_EQ(details.controller().groupIDTextbox->stringValue(), "5");
    EXPECT_EQ(details.controller().refCountTextbox->stringValue(), "3");
}

TEST_F(GatherDetailsTest, leavesTheVolumePathAloneWhenEitherNumberIsZeroOrMissing) {
    details.open();
    const std::string shown = details.controller().volfsPathTextbox->stringValue();
    for (const auto* const key : {"NSFileSystemNumber", "NSFileSystemFileNumber"}) {
        DetailsWindow zero;
        zero.fileManager.answer->set(key, std::uint64_t{0});
        zero.open();
        EXPECT_EQ(zero.controller().volfsPathTextbox->stringValue(), "") << key;
        zero.controller().volfsPathTextbox->setStringValue(shown);
        zero.showAgain();
        EXPECT_EQ(zero.controller().volfsPathTextbox->stringValue(), shown) << key;
    }
    removeAttribute("NSFileSystemNumber");
    DetailsWindow missing;
    missing.fileManager.answer = details.fileManager.answer;
    missing.open();
    EXPECT_EQ(missing.controller().volfsPathTextbox->stringValue(), "");
}

TEST_F(GatherDetailsTest, showsLargestFileNumbersUnsigned) {
    setAttribute("NSFileSystemNumber", UINT64_MAX);
    setAttribute("NSFileSystemFileNumber", UINT64_MAX);
    details.open();
    EXPECT_EQ(
        details.controller().volfsPathTextbox->stringValue(),
        "/.vol/18446744073709551615/18446744073709551615");
}

TEST_F(GatherDetailsTest, showsANegativeUrlMetadataSize) {
    details.resources.values.set("NSURLTotalFileSizeKey", std::int64_t{1});
    details.open();
    EXPECT_EQ(details.controller().urlXattrSize->stringValue(), "-999");
}

TEST_F(GatherDetailsTest, showsNotAvailableForATypeThatCannotBeFound) {
    details.resources.failingKey = "NSURLTypeIdentifierKey";
    details.open();
    EXPECT_EQ(details.controller().typeTextbox->stringValue(), "NSFileTypeRegular: N/A");

    details.resources.failingKey.reset();
    details.resources.values.set("NSURLTypeIdentifierKey", std::int64_t{5});
    details.showAgain();
    EXPECT_EQ(details.controller().typeTextbox->stringValue(), "NSFileTypeRegular: N/A");
}

TEST_F(GatherDetailsTest, keepsTheTextOfFieldsThatAPassDoesNotReach) {
    details.fileManager.answer = Dictionary{{"NSFileSize", std::uint64_t{1}}};
    details.open();
    for (const auto* const name : {"permsTextbox", "ownerNameTextbox", "createdTextbox", "typeTextbox"}) {
        EXPECT_EQ(fieldTexts().at(name), "") << name;
    }
    details.controller().permsTextbox->setStringValue("earlier");
    details.showAgain();
    EXPECT_EQ(details.controller().permsTextbox->stringValue(), "earlier");
}

TEST_F(GatherDetailsTest, skipsAttributesItDoesNotKnow) {
    details.open();
    const auto before = fieldTexts();
    setAttribute("NSFileImmutable", true);
    setAttribute("NSfileType", "not the key");
    DetailsWindow another;
    another.fileManager.answer = details.fileManager.answer;
    another.open();
    EXPECT_EQ(another.controller().typeTextbox->stringValue(), before.at("typeTextbox"));
}

TEST_F(GatherDetailsTest, keepsTheBookmarkTextWhenNoBookmarkCanBeMade) {
    details.open();
    details.bookmarks.made = std::unexpected(platform::posixError(EIO));
    details.showAgain();
    EXPECT_EQ(details.bookmarkText(), "Ym9va21hcms=");
    EXPECT_EQ(details.controller().bookmarkPathTextbox->stringValue(), "(couldn't get bookmark)");
    EXPECT_EQ(details.controller().theDate(), platform::Date(1)) << "the pass goes on to its end";
}

TEST_F(GatherDetailsTest, resolvesTheBookmarkItHasJustMade) {
    details.bookmarks.made = bytesOf("fresh");
    details.bookmarks.resolved =
        platform::ResolvedBookmark{platform::URL::fileURLWithPath("/moved/here"), true};
    details.open();
    EXPECT_EQ(details.bookmarks.resolvedFrom, bytesOf("fresh"));
    EXPECT_EQ(details.controller().bookmarkPathTextbox->stringValue(), "/moved/here");
}

TEST_F(GatherDetailsTest, showsTheSameTextForAFailedResolution) {
    details.bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    details.open();
    EXPECT_EQ(details.bookmarkText(), "Ym9va21hcms=");
    EXPECT_EQ(details.controller().bookmarkPathTextbox->stringValue(), "(couldn't get bookmark)");
}

TEST_F(GatherDetailsTest, saysWhenResolutionNamesNoItem) {
    details.bookmarks.resolved = platform::ResolvedBookmark{};
    details.open();
    EXPECT_EQ(details.controller().bookmarkPathTextbox->stringValue(), "(couldn't resolve)");
}

TEST_F(GatherDetailsTest, givesTheBookmarkAColourAndNoFont) {
    details.open();
    const auto& runs = details.controller().bookmarkTextbox->textStorage()->attributedString().runs();
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs.front().attributes.foregroundColor, platform::Color::textColor);
    EXPECT_EQ(runs.front().attributes.font, std::nullopt);
}

TEST_F(GatherDetailsTest, leavesAWindowWithoutSizeRecordsUntouched) {
    auto document = std::make_shared<inspect::Document>(details.fileSources(), details.bundle);
    document->makeWindowControllers();
    document->showWindows();
    const auto content = std::dynamic_pointer_cast<details::ViewController>(
        document->windowControllers().front()->contentViewController());
    EXPECT_EQ(content->pathTextbox->stringValue(), "");
    EXPECT_EQ(content->theDate(), std::nullopt);
    EXPECT_TRUE(details.log.empty());
}

TEST_F(GatherDetailsTest, emptiesTheReportAtTheStartOfEveryPass) {
    details.open();
    details.controller().buildReport();
    EXPECT_NE(details.controller().saveString(), "");
    details.showAgain();
    EXPECT_EQ(details.controller().saveString(), "");
}

TEST_F(GatherDetailsTest, endsQuietlyWithoutWindowControllerOrDocument) {
    details.open();
    const auto controller = details.sharedController();
    controller->buildReport();
    details.document()->close();
    ASSERT_EQ(controller->view().window()->windowController(), nullptr);
    controller->pathTextbox->setStringValue("left alone");
    controller->gatherDetails();
    EXPECT_EQ(controller->saveString(), "");
    EXPECT_EQ(controller->pathTextbox->stringValue(), "left alone");

    const auto undocumented = details::ViewController::initWithCoder({}, details.detailsSources());
    platform::connectOutlets(*undocumented);
    const auto holder = platform::WindowController::make(std::make_shared<platform::Window>(), undocumented);
    undocumented->gatherDetails();
    EXPECT_EQ(undocumented->theDate(), std::nullopt);

    const auto windowless =
        details::ViewController::initWithNibName("Details", nullptr, details.detailsSources());
    windowless->gatherDetails();
    EXPECT_EQ(windowless->theDate(), std::nullopt);
}

TEST_F(GatherDetailsTest, keepsItsIdentityAfterTheFileIsGone) {
    details.url.keepResourceValue("NSURLFileResourceIdentifierKey", platform::Data(16, std::byte{2}));
    details.resources.values = {};
    details.open();
    EXPECT_EQ(
        details.controller().frURLTextbox->stringValue(),
        "file:///.file/id=144680345676153346.144680345676153346");
}

TEST_F(GatherDetailsTest, showsAPathThatIsNotUtf8WithReplacementCharacters) {
    details.url = platform::URL::fileURLWithPath("/data/a\xFF\nb");
    details.open();
    EXPECT_EQ(details.controller().pathTextbox->stringValue(), "/data/a\xEF\xBF\xBD\nb");
    EXPECT_EQ(details.window().title(), "a\xEF\xBF\xBD\nb");
}

TEST_F(GatherDetailsTest, passesTheRepresentedObjectThrough) {
    details.open();
    EXPECT_FALSE(details.controller().representedObject().has_value());
    details.controller().setRepresentedObject(std::string("object"));
    EXPECT_EQ(std::any_cast<std::string>(details.controller().representedObject()), "object");
}

TEST_F(GatherDetailsDeathTest, stopsWithoutAFileReferenceURL) {
    details.resources.failingKey = "NSURLFileResourceIdentifierKey";
    EXPECT_DEATH(details.open(), "^tolvane: fatal: .*file reference URL");
}

TEST_F(GatherDetailsDeathTest, stopsWhenTheUrlMetadataOverflows) {
    details.resources.values.set("NSURLTotalFileSizeKey", INT64_MIN);
    details.resources.values.set("NSURLFileSizeKey", std::int64_t{1});
    EXPECT_DEATH(details.open(), "^tolvane: fatal: the URL metadata size overflows");
}

TEST_F(GatherDetailsDeathTest, stopsWhenTheFileSystemTotalOverflows) {
    setAttribute("NSFileSize", INT64_MAX);
    EXPECT_DEATH(details.open(), "^tolvane: fatal: the file system's total size overflows");
}

TEST_F(GatherDetailsDeathTest, stopsAtAnAttributeOfTheWrongKind) {
    const std::map<std::string, Value> wrongKinds{
        {"NSFilePosixPermissions", "644"},
        {"NSFileSystemNumber", std::int32_t{-1}},
        {"NSFileSystemFileNumber", "12"},
        {"NSFileOwnerAccountName", std::uint32_t{5}},
        {"NSFileOwnerAccountID", "root"},
        {"NSFileGroupOwnerAccountName", platform::Data{}},
        {"NSFileGroupOwnerAccountID", platform::Date(0)},
        {"NSFileCreationDate", "today"},
        {"NSFileModificationDate", 0.0},
        {"NSFileType", std::int32_t{1}},
        {"NSFileReferenceCount", Dictionary{}},
    };
    for (const auto& [key, value] : wrongKinds) {
        DetailsWindow broken;
        broken.fileManager.answer->set(key, value);
        EXPECT_DEATH(broken.open(), "^tolvane: fatal: attribute " + key + " is of the wrong kind") << key;
    }
}

TEST_F(GatherDetailsDeathTest, stopsAtAnUnconnectedOutlet) {
    details.open();
    const auto bare = details::ViewController::initWithCoder({}, details.detailsSources());
    const auto holder = platform::WindowController::make(std::make_shared<platform::Window>(), bare);
    holder->setDocument(details.document());
    EXPECT_DEATH(bare->gatherDetails(), "^tolvane: fatal: outlet pathTextbox is not connected");
}

TEST_F(GatherDetailsDeathTest, stopsAtADocumentOfAnotherClass) {
    struct OtherDocument final : platform::Document {
        bool readFromURL(const platform::URL&, std::string_view, platform::Error*) override { return true; }
        void makeWindowControllers() override {}
    };
    details.open();
    const auto other = std::make_shared<OtherDocument>();
    details.document()->windowControllers().front()->setDocument(other);
    EXPECT_DEATH(details.controller().gatherDetails(), "^tolvane: fatal: .*document is of the wrong class");
}

} // namespace
} // namespace tolvane::tests
