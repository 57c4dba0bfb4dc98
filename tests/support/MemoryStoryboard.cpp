#include "tests/support/MemoryStoryboard.h"

#include "platform/model/Controls.h"
#include "platform/model/ProgressIndicator.h"
#include "platform/model/Table.h"

#include <utility>
#include <variant>

namespace tolvane::platform {

namespace {

template <typename T>
void connect(Outlet<T>& outlet, View& view) {
    if (!outlet.isConnected()) {
        outlet.connect(view.addControl<T>());
    }
}

} // namespace

void connectOutlets(ContentController& controller) {
    controller.view().reserveControls(controller.outlets().entries().size());
    for (const OutletTable::Entry& entry : controller.outlets().entries()) {
        std::visit([&controller](auto* outlet) { connect(*outlet, controller.view()); }, entry.outlet);
    }
}

void MemoryStoryboard::addScene(std::string identifier, Scene scene) {
    scenes_.insert_or_assign(std::move(identifier), std::move(scene));
}

void MemoryStoryboard::addWindowScene(std::string identifier, ContentMaker content, WindowMaker makeWindow) {
    addScene(
        std::move(identifier),
        [content = std::move(content), makeWindow = std::move(makeWindow)](const Coder& coder) {
            std::shared_ptr<ContentController> controller = content(coder);
            connectOutlets(*controller);
            return WindowController::make(makeWindow(), std::move(controller));
        });
}

std::shared_ptr<Controller> MemoryStoryboard::instantiateControllerWithIdentifier(
    std::string_view identifier) const {
    const auto scene = scenes_.find(identifier);
    return scene == scenes_.end() ? nullptr : scene->second(Coder{scene->first});
}

MemoryStoryboard& MemoryBundle::storyboard(std::string_view name) {
    return storyboards_.try_emplace(std::string(name)).first->second;
}

const Storyboard* MemoryBundle::storyboardWithName(std::string_view name) const {
    const auto storyboard = storyboards_.find(name);
    return storyboard == storyboards_.end() ? nullptr : &storyboard->second;
}

} // namespace tolvane::platform
