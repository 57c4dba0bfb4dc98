#include "platform/model/View.h"

#include "platform/model/TextField.h"
#include "platform/model/Window.h"

#include <gtest/gtest.h>

#include <memory>

namespace tolvane::platform {
namespace {

class Mortal final : public Control {
public:
    ~Mortal() override { ++*deaths; }
    int* deaths = nullptr;
};

TEST(View, ownsItsControls) {
    int deaths = 0;
    {
        View view;
        view.addControl<Mortal>().deaths = &deaths;
        TextField& field = view.addControl<TextField>();
        view.addControl<Mortal>().deaths = &deaths;
        field.setStringValue("a");
        EXPECT_EQ(field.stringValue(), "a");
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 2);
}

TEST(View, keepsItsWindowAlive) {
    View view;
    EXPECT_EQ(view.window(), nullptr);
    auto window = std::make_shared<Window>();
    const std::weak_ptr<Window> watched = window;
    view.setWindow(std::move(window));
    EXPECT_EQ(view.window(), watched.lock().get());
    EXPECT_FALSE(watched.expired());
    view.setWindow(nullptr);
    EXPECT_EQ(view.window(), nullptr);
    EXPECT_TRUE(watched.expired());
}

TEST(View, releasesItsFrontEndBeforeItsControls) {
    int deaths = 0;
    int deathsSeenByFrontEnd = -1;
    {
        View view;
        view.addControl<Mortal>().deaths = &deaths;
        view.setFrontEnd(
            std::shared_ptr<void>(nullptr, [&](void* /*nothing*/) { deathsSeenByFrontEnd = deaths; }));
        EXPECT_EQ(deathsSeenByFrontEnd, -1);
    }
    EXPECT_EQ(deathsSeenByFrontEnd, 0);
    EXPECT_EQ(deaths, 1);
}

} // namespace
} // namespace tolvane::platform
