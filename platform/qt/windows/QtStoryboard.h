#pragma once

#include "platform/model/ContentController.h"
#include "platform/model/Storyboard.h"
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

/// A storyboard whose scenes are windows. A scene's form puts widgets into a new window; those named like an
/// outlet of the content controller are connected to it, and the outlet's control begins with what the widget
/// holds. Outlets without a suitable widget stay unconnected, which is fatal on use. Labels and buttons whose
/// property "noteOf" names a text field show its note.
class QtStoryboard final : public Storyboard {
public:
    using ContentMaker = std::function<std::shared_ptr<ContentController>(const Coder& coder)>;
    using Form = std::function<void(QMainWindow& window)>;
    /// Makes the model of a window of this place and kind.
    using WindowMaker = std::function<std::shared_ptr<Window>(
        const Rect& contentRect, WindowStyleMask styleMask, BackingStore backing, bool defer)>;

    /// `application` outlives the storyboard and all that is made of it.
    explicit QtStoryboard(QtApplication& application) : application_(application) {}

    /// Adds or replaces a scene. `makeWindow` makes its model if that is of a class of its own.
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

/// A bundle with one storyboard, "Main", and the program's version.
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
