#pragma once

#include "platform/model/ContentController.h"
#include "platform/model/Window.h"

#include <memory>
#include <utility>

namespace tolvane::platform {

class Document;

/// Keeps a window and the controller of its content together, and links them to the document they show.
class WindowController final : public Controller {
    /// Restricts the constructor to `make`.
    struct Key {};

public:
    /// Links window, content and the new controller. `content` may be null for a bare window.
    static std::shared_ptr<WindowController> make(
        std::shared_ptr<Window> window, std::shared_ptr<ContentController> content);

    const std::shared_ptr<Window>& window() const { return window_; }
    const std::shared_ptr<ContentController>& contentViewController() const { return content_; }

    /// The document that this controller was added to, or null.
    std::shared_ptr<Document> document() const { return document_.lock(); }

    /// Links the document and makes its display name the window's title.
    void setDocument(const std::shared_ptr<Document>& document);

    /// Brings the window to the front, showing it when it was absent.
    void showWindow() { window_->makeKeyAndOrderFront(); }

    void close() { window_->close(); }

    WindowController(Key, std::shared_ptr<Window> window, std::shared_ptr<ContentController> content)
        : window_(std::move(window))
        , content_(std::move(content)) {}

private:
    std::shared_ptr<Window> window_;
    std::shared_ptr<ContentController> content_;
    std::weak_ptr<Document> document_;
};

/// Makes the controller of a scene of the storyboard "Main". Fatal if it is missing or not a window
/// controller.
std::shared_ptr<WindowController> windowControllerOfScene(const Bundle& bundle, std::string_view identifier);

} // namespace tolvane::platform
