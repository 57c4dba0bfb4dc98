#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/Outlet.h"
#include "platform/model/View.h"

#include <any>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {

class Bundle;

/// What a storyboard can make: a window controller or a view controller. The caller checks which.
class Controller {
public:
    Controller() = default;
    Controller(const Controller&) = delete;
    Controller& operator=(const Controller&) = delete;
    virtual ~Controller() = default;
};

/// The archive that a storyboard passes to a controller that it makes: the controller's scene.
struct Coder {
    std::string sceneIdentifier;
};

/// The base of the controllers of a window's content. They are held by shared pointers, so that a panel can
/// keep its controller alive.
class ContentController : public Controller,
                          public ActionTarget,
                          public std::enable_shared_from_this<ContentController> {
public:
    /// A null `bundle` stands for the application's own.
    ContentController(std::optional<std::string> nibName, const Bundle* bundle)
        : nibName_(std::move(nibName))
        , bundle_(bundle) {}
    explicit ContentController(const Coder& coder) : nibName_(coder.sceneIdentifier) {}

    const std::optional<std::string>& nibName() const { return nibName_; }
    const Bundle* bundle() const { return bundle_; }

    View& view() { return view_; }
    const View& view() const { return view_; }

    /// The outlets, to be connected before the view is loaded.
    const OutletTable& outlets() const { return outlets_; }

    /// Runs `viewDidLoad` the first time it is called.
    void loadViewIfNeeded() {
        if (!std::exchange(viewLoaded_, true)) {
            viewDidLoad();
        }
    }

    /// The controller's own actions; none unless overridden.
    std::function<void(Sender)> actionForSelector(std::string_view /*selector*/) override { return {}; }

    virtual void viewDidLoad() {}
    virtual void viewDidAppear() {}

    /// Any object that the controller represents; initially empty.
    virtual const std::any& representedObject() const { return representedObject_; }
    virtual void setRepresentedObject(std::any object) { representedObject_ = std::move(object); }

protected:
    OutletTable& outletTable() { return outlets_; }

private:
    std::optional<std::string> nibName_;
    const Bundle* bundle_ = nullptr;
    View view_;
    OutletTable outlets_;
    std::any representedObject_;
    bool viewLoaded_ = false;
};

} // namespace tolvane::platform
