#include "platform/macos/desktop/MacServices.h"

#include "tests/platform/macos/substitute/Desktop.h"
#include "tests/platform/macos/substitute/Objects.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane {
namespace {

using namespace platform;
using namespace tests::macos;
using testing::ElementsAre;
using testing::Optional;

using Names = std::vector<std::string>;

class MacServicesTest : public testing::Test {
protected:
    /// Has the system pass this as the names; null if it has none.
    void serve(CFTypeRef names) {
        const CFTypeRef type = newString("names");
        desktop.serve(static_cast<CFStringRef>(type), names);
        release(type);
        if (names != nullptr) {
            release(names);
        }
    }

    Substitute substitute;
    DesktopSubstitute desktop;
    std::vector<std::optional<Names>> served;
    std::unique_ptr<MacServices> services =
        std::make_unique<MacServices>([this](const std::shared_ptr<const ServicesPasteboard>& pasteboard) {
            served.push_back(pasteboard->fileNames());
        });
};

TEST_F(MacServicesTest, passesTheNamesOnInTheirOrder) {
    serve(newArray({newString("/b"), newString("/a"), newString(u"/K\u00E4se")}));
    EXPECT_THAT(served, ElementsAre(Optional(Names{"/b", "/a", "/Käse"})));
}

TEST_F(MacServicesTest, passesOnThatThereAreNone) {
    serve(nullptr);
    serve(newString("/a"));
    serve(newArray({newString("/a"), newBoolean(true)}));
    EXPECT_THAT(served, ElementsAre(std::nullopt, std::nullopt, std::nullopt));
}

TEST_F(MacServicesTest, passesAnEmptyListOn) {
    serve(newArray({}));
    EXPECT_THAT(served, ElementsAre(Optional(Names{})));
}

TEST_F(MacServicesTest, isTheProviderWhileItLives) {
    EXPECT_NE(desktop.provider, nullptr);
    services.reset();
    EXPECT_EQ(desktop.provider, nullptr);
    EXPECT_EQ(livingObjects(), 0U);
}

TEST_F(MacServicesTest, stopsWithoutATypeForNames) {
    EXPECT_DEATH(desktop.serve(nullptr, nullptr), "there is no pasteboard type for file names");
}

} // namespace
} // namespace tolvane
