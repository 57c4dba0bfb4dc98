#include "platform/model/TextView.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvane::platform {
namespace {

const TextAttributes coloredText{Color::textColor, {}};

TEST(TextStorage, replacesAllTextAndAttributes) {
    TextStorage storage;
    EXPECT_EQ(storage.string(), "");
    storage.setAttributedString({"old", coloredText});
    storage.setAttributedString({"a\r\n\u00A0", {}});
    EXPECT_EQ(storage.string(), "a\r\n\u00A0");
    EXPECT_EQ(storage.attributedString(), AttributedString("a\r\n\u00A0", {}));
}

TEST(TextStorage, appendsToTheEnd) {
    TextStorage storage;
    storage.setAttributedString({"a", {}});
    storage.appendAttributedString({"b", coloredText});
    EXPECT_EQ(storage.string(), "ab");
    EXPECT_EQ(storage.attributedString().runs().size(), 2U);
}

TEST(TextStorage, canBeAppendedToItself) {
    TextStorage storage;
    storage.setAttributedString({"ab", coloredText});
    storage.appendAttributedString(storage.attributedString());
    EXPECT_EQ(storage.attributedString(), AttributedString("abab", coloredText));
}

TEST(TextStorage, notifiesObserversOnceForEachChange) {
    TextStorage storage;
    std::string seen;
    const Subscription subscription = storage.observe([&] { seen += storage.string() + ";"; });
    storage.setAttributedString({"a", {}});
    storage.appendAttributedString({"b", {}});
    storage.appendAttributedString({});
    EXPECT_EQ(seen, "a;ab;ab;");
}

TEST(TextStorage, mayBeRemovedByAnObserver) {
    TextView view;
    Subscription subscription = view.textStorage()->observe([&] { view.removeTextStorage(); });
    view.textStorage()->setAttributedString({"a", {}});
    EXPECT_EQ(view.textStorage(), nullptr);

    TextView other;
    subscription = other.textStorage()->observe([&] { other.removeTextStorage(); });
    other.textStorage()->appendAttributedString({"a", {}});
    EXPECT_EQ(other.textStorage(), nullptr);
}

TEST(TextView, hasAnEmptyStorageUntilItIsRemoved) {
    TextView view;
    ASSERT_NE(view.textStorage(), nullptr);
    EXPECT_EQ(view.textStorage()->attributedString(), AttributedString());
    for (int i = 0; i < 2; ++i) {
        view.removeTextStorage();
        EXPECT_EQ(view.textStorage(), nullptr);
    }
}

TEST(TextView, givesItsPlainText) {
    TextView view;
    EXPECT_EQ(view.string(), "");
    view.textStorage()->setAttributedString({"a\nb", coloredText});
    view.textStorage()->appendAttributedString({"c", {}});
    EXPECT_EQ(view.string(), "a\nbc");
    view.removeTextStorage();
    EXPECT_EQ(view.string(), "");
    view.setString("lost");
    EXPECT_EQ(view.string(), "");
}

TEST(TextView, keepsTheFirstAttributesWhenItsTextIsReplaced) {
    TextView view;
    view.setString("plain");
    EXPECT_EQ(view.textStorage()->attributedString(), AttributedString("plain", {}));
    view.textStorage()->setAttributedString({"old", coloredText});
    view.textStorage()->appendAttributedString({"rest", {}});
    view.setString("new");
    EXPECT_EQ(view.textStorage()->attributedString(), AttributedString("new", coloredText));
}

} // namespace
} // namespace tolvane::platform
