#include "platform/qt/application/QtUserDefaults.h"

#include "tests/platform/qt/QtTest.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Unprivileged.h"

#include <QByteArray>
#include <QFileDialog>
#include <QFileInfo>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using platform::QtUserDefaults;

class QtUserDefaultsTest : public testing::Test {
protected:
    QString file() const { return QString::fromStdString(folder.path("deep/tolvane.conf")); }

    /// Writes the file as another program would.
    void write(const std::string& lines) const {
        std::filesystem::create_directories(folder.path("deep"));
        folder.file("deep/tolvane.conf", "[General]\n" + lines);
    }

    std::string written() const { return contentsOfFile(folder.path("deep/tolvane.conf")); }

    /// A copy that Qt has not read, since it reads a file again only if its length or date has changed.
    QString copyOfFile() {
        return QString::fromStdString(folder.file("copy" + std::to_string(++copies) + ".conf", written()));
    }

    TemporaryFolder folder;
    int copies = 0;
};

TEST_F(QtUserDefaultsTest, readsNothingAsZeroAndStoresNothingUnderAnEmptyKey) {
    QtUserDefaults defaults(file());
    EXPECT_EQ(defaults.doubleForKey("size"), 0.0);
    EXPECT_TRUE(defaults.textsForKey("list").empty());
    EXPECT_TRUE(defaults.bytesForKey("bytes").isEmpty());
    EXPECT_FALSE(QFileInfo::exists(file())) << "reading makes no file";
    defaults.setDouble(1, "");
    EXPECT_EQ(defaults.doubleForKey(""), 0.0);
    EXPECT_FALSE(QFileInfo::exists(file())) << "an empty key stores nothing";
}

TEST_F(QtUserDefaultsTest, leavesTheFileAloneThatHasTheValueAlready) {
    const std::vector<std::string> none;
    const std::vector<std::string> one{"a"};
    const std::vector<std::string> two{"a", "b"};
    QtUserDefaults defaults(file());
    const auto setAll = [&] {
        defaults.setBool(false, "no");
        defaults.setTexts(none, "none");
        defaults.setTexts(one, "one");
        defaults.setTexts(two, "two");
        defaults.setBytes(QByteArray("\0b", 2), "bytes");
    };
    setAll();
    // Qt writes a new file and moves it over the old one.
    const std::string link = folder.path("first.conf");
    std::filesystem::create_hard_link(file().toStdString(), link);
    setAll();
    EXPECT_TRUE(std::filesystem::equivalent(file().toStdString(), link));
    QtUserDefaults(file()).setTexts(two, "two");
    EXPECT_TRUE(std::filesystem::equivalent(file().toStdString(), link));
    defaults.setTexts(one, "two");
    EXPECT_FALSE(std::filesystem::equivalent(file().toStdString(), link));
    EXPECT_NE(written(), contentsOfFile(link));
}

TEST_F(QtUserDefaultsTest, writesANumberEachTime) {
    QtUserDefaults defaults(file());
    defaults.setDouble(24, "size");
    // Another instance's change that this one cannot see: of the same length and date.
    const auto date = std::filesystem::last_write_time(file().toStdString());
    write("size=12\n");
    std::filesystem::last_write_time(file().toStdString(), date);
    defaults.setDouble(24, "size");
    EXPECT_EQ(QtUserDefaults(copyOfFile()).doubleForKey("size"), 24.0);
}

TEST_F(QtUserDefaultsTest, writesEachValueThatDiffers) {
    QtUserDefaults defaults(file());
    defaults.setDouble(0.0, "size");
    defaults.setDouble(-0.0, "size");
    EXPECT_TRUE(std::signbit(QtUserDefaults(copyOfFile()).doubleForKey("size")));
    defaults.setTexts(std::vector<std::string>{}, "list");
    defaults.setTexts(std::vector<std::string>{""}, "list");
    EXPECT_EQ(QtUserDefaults(copyOfFile()).textsForKey("list"), std::vector<std::string>{""});
    defaults.setTexts(std::vector<std::string>{}, "list");
    EXPECT_TRUE(QtUserDefaults(copyOfFile()).textsForKey("list").empty());
    defaults.setBytes("5", "bytes");
    defaults.setDouble(5, "bytes");
    EXPECT_EQ(QtUserDefaults(copyOfFile()).doubleForKey("bytes"), 5.0);
}

TEST_F(QtUserDefaultsTest, keepsEveryFiniteNumberExactly) {
    using Limits = std::numeric_limits<double>;
    std::vector<double> numbers{0.0, -0.0, 0.1, 1.0 / 3, 13, 1e23, 9007199254740993.0};
    numbers.insert(numbers.end(), {Limits::max(), Limits::lowest(), Limits::min(), Limits::denorm_min()});
    std::uint64_t bits = 0x9E3779B97F4A7C15U;
    for (int i = 0; i < 200; ++i) {
        bits = bits * 6364136223846793005U + 1442695040888963407U;
        if (const auto number = std::bit_cast<double>(bits); std::isfinite(number)) {
            numbers.push_back(number);
        }
    }
    QtUserDefaults defaults(file());
    for (const double number : numbers) {
        defaults.setDouble(number, "size");
        const double read = QtUserDefaults(copyOfFile()).doubleForKey("size");
        EXPECT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(number)) << written();
    }
}

TEST_F(QtUserDefaultsTest, readsOtherKindsAsAbsent) {
    write("word=large\nmixed=12pt\nlist=1, 2\nbytes=@ByteArray(5)\nempty=\nnumber=5\n");
    const QtUserDefaults defaults(file());
    for (const auto* key : {"word", "mixed", "list", "bytes", "empty"}) {
        EXPECT_EQ(defaults.doubleForKey(key), 0.0) << key;
    }
    EXPECT_EQ(defaults.doubleForKey("number"), 5.0);
    EXPECT_TRUE(defaults.textsForKey("bytes").empty());
    EXPECT_TRUE(defaults.bytesForKey("list").isEmpty());
    EXPECT_TRUE(defaults.bytesForKey("word").isEmpty());
}

TEST_F(QtUserDefaultsTest, writesNumbersAndYesAndNoWhenSet) {
    QtUserDefaults defaults(file());
    EXPECT_FALSE(defaults.boolForKey("no"));
    defaults.setDouble(12.5, "size");
    EXPECT_EQ(written(), "[General]\nsize=12.5\n");
    defaults.setBool(true, "yes");
    defaults.setBool(false, "no");
    EXPECT_EQ(written(), "[General]\nno=false\nsize=12.5\nyes=true\n");
    const QtUserDefaults again(copyOfFile());
    EXPECT_TRUE(again.boolForKey("yes"));
    EXPECT_FALSE(again.boolForKey("no"));
}

TEST_F(QtUserDefaultsTest, takesWhatStandsForYesAndNothingElse) {
    write("a=true\nb=YES\nc=1\nd=-0.5\ne=True\nf=false\ng=no\nh=0\ni=\nj=truely\nk=true, true\nl=0.0\n");
    const QtUserDefaults defaults(file());
    for (const auto* key : {"a", "b", "c", "d", "e"}) {
        EXPECT_TRUE(defaults.boolForKey(key)) << key;
    }
    for (const auto* key : {"f", "g", "h", "i", "j", "k", "l", "absent", ""}) {
        EXPECT_FALSE(defaults.boolForKey(key)) << key;
    }
}

TEST_F(QtUserDefaultsTest, seesAndKeepsWhatAnotherInstanceWrote) {
    QtUserDefaults defaults(file());
    defaults.setDouble(10, "mine");
    write("mine=10\ntheirs=20\n");
    EXPECT_EQ(defaults.doubleForKey("theirs"), 20.0);
    write("mine=10\ntheirs=333\n");
    defaults.setDouble(11, "mine");
    EXPECT_EQ(defaults.doubleForKey("mine"), 11.0);
    EXPECT_EQ(defaults.doubleForKey("theirs"), 333.0);
    EXPECT_EQ(written(), "[General]\nmine=11\ntheirs=333\n");
}

TEST_F(QtUserDefaultsTest, keepsTextListsAndBytes) {
    QtUserDefaults defaults(file());
    for (const auto& list : std::vector<std::vector<std::string>>{
             {}, {"one"}, {""}, {"a", "b, c", "\"d\"", "", " e ", "@f", "\u00FC\u2028\n", "g;h=i\\j%"}}) {
        defaults.setTexts(list, "list");
        EXPECT_EQ(QtUserDefaults(copyOfFile()).textsForKey("list"), list);
    }
    QByteArray all;
    for (int i = 0; i < 256; ++i) {
        all.append(static_cast<char>(i));
    }
    defaults.setBytes(all, "bytes");
    EXPECT_EQ(QtUserDefaults(copyOfFile()).bytesForKey("bytes"), all);
}

TEST_F(QtUserDefaultsTest, goesOnInMemoryWhereTheFileCannotBeWritten) {
    folder.file("deep", "a file where the folder should be");
    QtUserDefaults defaults(file());
    testing::internal::CaptureStderr();
    defaults.setDouble(12, "size");
    defaults.setTexts(std::vector<std::string>{"a", "b"}, "list");
    EXPECT_EQ(defaults.doubleForKey("size"), 12.0);
    EXPECT_EQ(defaults.textsForKey("list"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(QtUserDefaultsTest, goesOnInMemoryInAFolderOfAnotherUser) {
    write("size=5\n");
    const int answer = answerOfUnprivilegedChild([this] {
        QtUserDefaults defaults(file());
        const bool wasRead = defaults.doubleForKey("size") == 5.0;
        defaults.setDouble(12, "size");
        return wasRead && defaults.doubleForKey("size") == 12.0 ? 1 : 0;
    });
    EXPECT_EQ(answer, 1);
}

TEST_F(QtUserDefaultsTest, readsADamagedFileAsFarAsItGoes) {
    write("[[[\n\xFF\xFE=%\n=5\nsize=7\n");
    QtUserDefaults defaults(file());
    EXPECT_EQ(defaults.doubleForKey("absent"), 0.0);
    defaults.setDouble(8, "size");
    EXPECT_EQ(defaults.doubleForKey("size"), 8.0);
}

TEST(QtUserDefaultsFile, liesInTheUsersConfigurationFolder) {
    const TemporaryFolder folder;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.path()));
    QtUserDefaults defaults;
    defaults.setDouble(3, "size");
    EXPECT_EQ(contentsOfFile(folder.path("tolvane/tolvane.conf")), "[General]\nsize=3\n");
}

TEST(QtUserDefaultsFile, hasQtsOwnSettingsBesideIt) {
    application();
    const TemporaryFolder folder;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.path()));
    platform::keepToolkitSettingsBesideOurs();
    { const QFileDialog remembersWhereItWas; }
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
        names.push_back(entry.path().lexically_relative(folder.path()).string());
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("tolvane", "tolvane/QtProject.conf"));
}

} // namespace
} // namespace tolvane::tests
