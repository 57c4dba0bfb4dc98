#pragma once

#include "platform/model/Storyboard.h"
#include "platform/model/ViewController.h"
#include "platform/model/Window.h"
#include "platform/model/WindowController.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

class QMainWindow;

namespace tolvane::platform {

class QtApplication;

/// A storyboard whose scenes are windows on the screen. A scene's form puts widgets into a new window; those
/// that bear the name of an outlet of the content controller are connected to it. Labels and buttons whose
/// property "noteOf" has the name of a text field show what is to be noted of that. An outlet for which the
/// form has no widget, or one of another kind, stays unconnected, which is fatal when it is used.
class QtStoryboard final : public Storyboard {
public:
    using ContentMaker = std::function<std::shared_ptr<ViewController>(const Coder& coder)>;
    using Form = std::function<void(QMainWindow& window)>;
    /// Makes the model of a window of this place and kind.
    using WindowMaker = std::function<std::shared_ptr<Window>(
        const Rect& contentRect, WindowStyleMask styleMask, BackingStore backing, bool defer)>;

    /// `application` outlives the storyboard and all that is made of it.
    explicit QtStoryboard(QtApplication& application) : application_(application) {}

    /// Adds a scene, or replaces the one of that identifier. `makeWindow` gives each its model, where that is
    /// to be of a class of its own.
    void addWindowScene(
        std::string identifier,
        ContentMaker content,
        Form form,
        WindowMaker makeWindow = &Window::initWithContentRect);

    std::shared_ptr<Controller> instantiateControllerWithIdentifier(
        std::string_view identifier) const override;

private:
    struct Scene {
        ContentMaker content;
        Form form;
        WindowMaker makeWindow;
    };

    QtApplication& application_;
    std::map<std::string, Scene, std::less<>> scenes_;
};

/// A bundle with one storyboard, "Main", that tells the program's version.
class QtBundle final : public Bundle {
public:
    QtBundle(QtApplication& application, std::string version)
        : main_(application)
        , infoDictionary_{{std::string(CFBundleShortVersionString), std::move(version)}} {}

    QtStoryboard& mainStoryboard() { return main_; }
    const Storyboard* storyboardWithName(std::string_view name) const override {
        return name == "Main" ? &main_ : nullptr;
    }

    const Dictionary* infoDictionary() const override { return &infoDictionary_; }

private:
    QtStoryboard main_;
    const Dictionary infoDictionary_;
};

} // namespace tolvane::platform
