#include "platform/qt/preview/TextFileView.h"

#include "tests/platform/qt/preview/PreviewTest.h"

#include <QScrollBar>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace tolvane::platform {
namespace {

using tests::MadeUpFile;
using tests::waitUntil;

constexpr std::uint64_t tenGigabytes = 10'000'000'000;

class TextFileViewTest : public tests::PreviewTest {
protected:
    TextFileViewTest() {
        view.resize(600, 400);
        view.show();
    }

    void show(const std::shared_ptr<const OpenedFile>& file) {
        view.showFile(file, TextEncoding::utf8);
        EXPECT_TRUE(waitUntil([&] { return !view.shownText().isEmpty(); }));
    }

    /// The offset that the first line seen tells of itself.
    std::uint64_t top() const { return view.shownText().section(u'.', 0, 0).section(u' ', 2).toULongLong(); }

    TextFileView view;
};

TEST_F(TextFileViewTest, opensAFileOfAnySizeAtOnce) {
    const auto file = std::make_shared<const MadeUpFile>(tenGigabytes, 100);
    show(file);
    EXPECT_EQ(top(), 0U);
    EXPECT_LE(file->bytesRead(), 2 * textBlockReach);
    EXPECT_GT(view.verticalScrollBar()->maximum(), 1'000'000);
}

TEST_F(TextFileViewTest, goesAnywhereInItWithoutReadingWhatLiesBetween) {
    const auto file = std::make_shared<const MadeUpFile>(tenGigabytes, 100);
    show(file);
    view.goTo(5'000'000'000);
    EXPECT_TRUE(waitUntil([&] { return top() == 5'000'000'000; }));
    view.goTo(UINT64_MAX);
    EXPECT_TRUE(waitUntil([&] { return view.shownText().contains(QStringLiteral("line at 9999999900.")); }));
    EXPECT_EQ(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
    view.goTo(0);
    EXPECT_TRUE(waitUntil([&] { return top() == 0; }));
    EXPECT_LE(file->bytesRead(), 8 * textBlockReach);
}

TEST_F(TextFileViewTest, scrollsOnWithoutGaps) {
    show(std::make_shared<const MadeUpFile>(1'000'000, 100));
    std::uint64_t expected = 0;
    for (int step = 0; step < 3000; ++step) {
        const std::uint64_t before = top();
        view.scrollByLines(3);
        expected = before + 300;
        ASSERT_TRUE(waitUntil([&] {
            if (top() < expected) {
                view.scrollByLines(static_cast<std::int64_t>(expected - top()) / 100);
            }
            return top() == expected;
        })) << top();
    }
    EXPECT_EQ(top(), 900'000U);
    for (int step = 0; step < 3000; ++step) {
        const std::uint64_t before = top();
        expected = before - 300;
        ASSERT_TRUE(waitUntil([&] {
            if (top() > expected) {
                view.scrollByLines(-static_cast<std::int64_t>(top() - expected) / 100);
            }
            return top() == expected;
        })) << top();
    }
    EXPECT_EQ(top(), 0U);
}

TEST_F(TextFileViewTest, followsItsScrollBar) {
    show(std::make_shared<const MadeUpFile>(tenGigabytes, 100));
    QScrollBar& bar = *view.verticalScrollBar();
    bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(top(), 100U);
    bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_GT(top(), 1000U);
    bar.triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_EQ(top(), 100U);
    bar.setSliderPosition(bar.maximum() / 2);
    bar.triggerAction(QAbstractSlider::SliderMove);
    EXPECT_TRUE(waitUntil([&] { return top() > 4'900'000'000 && top() < 5'100'000'000; }));
}

TEST_F(TextFileViewTest, survivesAFileThatShrinksAndGrows) {
    const auto file = std::make_shared<MadeUpFile>(tenGigabytes, 100);
    show(file);
    file->setSize(1000);
    view.goTo(5'000'000'000);
    EXPECT_TRUE(waitUntil([&] { return view.shownText().contains(QStringLiteral("line at 900.")); }));
    file->setSize(0);
    view.goTo(UINT64_MAX);
    view.goTo(0);
    file->setSize(tenGigabytes);
    view.showFile(file, TextEncoding::utf8);
    EXPECT_TRUE(waitUntil([&] { return view.shownText().startsWith(QStringLiteral("line at 0.")); }));
}

TEST_F(TextFileViewTest, opensARealFileOfTenGigabytes) {
    const std::string path = folder.file("sparse", "first line\n");
    std::filesystem::resize_file(path, tenGigabytes);
    const auto file = LinuxFileContents().openForReading(path);
    ASSERT_TRUE(file);
    show(*file);
    EXPECT_TRUE(view.shownText().startsWith(QStringLiteral("first line\n⟨NUL⟩⟨NUL⟩⟨NUL⟩")));
    view.grab();
}

TEST_F(TextFileViewTest, letsTheFileGo) {
    const auto file = std::make_shared<const MadeUpFile>(1000, 100);
    show(file);
    view.clear();
    EXPECT_EQ(view.shownText(), QString());
    EXPECT_TRUE(waitUntil([&] { return file.use_count() == 1; }));
}

} // namespace
} // namespace tolvane::platform
