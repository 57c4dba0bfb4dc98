#pragma once

#include "platform/model/ContentController.h"
#include "platform/model/Storyboard.h"
#include "platform/model/WindowController.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {

/// A storyboard whose scenes are functions: each makes a new controller.
class MemoryStoryboard final : public Storyboard {
public:
    using Scene = std::function<std::shared_ptr<Controller>(const Coder& coder)>;
    using ContentMaker = std::function<std::shared_ptr<ContentController>(const Coder& coder)>;
    using WindowMaker = std::function<std::shared_ptr<Window>()>;

    /// Adds a scene, or replaces the one of that identifier.
    void addScene(std::string identifier, Scene scene);

    /// Adds a scene that puts a view controller into a window: its outlets are connected to new controls of
    /// its view, and a window controller links the two. `makeWindow` gives each its window, where that is to
    /// be of a class of its own.
    void addWindowScene(
        std::string identifier, ContentMaker content, WindowMaker makeWindow = makePlainWindow);

    std::shared_ptr<Controller> instantiateControllerWithIdentifier(
        std::string_view identifier) const override;

private:
    static std::shared_ptr<Window> makePlainWindow() { return std::make_shared<Window>(); }

    std::map<std::string, Scene, std::less<>> scenes_;
};

/// A bundle whose storyboards are kept in memory.
class MemoryBundle final : public Bundle {
public:
    /// The storyboard of this name, made when it is first asked for.
    MemoryStoryboard& storyboard(std::string_view name);

    const Storyboard* storyboardWithName(std::string_view name) const override;

    /// There is none until it is set.
    void setInfoDictionary(Dictionary dictionary) { infoDictionary_ = std::move(dictionary); }
    const Dictionary* infoDictionary() const override {
        return infoDictionary_ ? &*infoDictionary_ : nullptr;
    }

private:
    std::optional<Dictionary> infoDictionary_;
    std::map<std::string, MemoryStoryboard, std::less<>> storyboards_;
};

/// Gives every outlet of the controller that is not connected yet a new control, owned by the controller's
/// view.
void connectOutlets(ContentController& controller);

} // namespace tolvane::platform
