#include "tests/hostile/FailingDetailsWindow.h"

#include "platform/ModalResponse.h"
#include "platform/WindowController.h"

#include <expected>

namespace tolvane::tests {

FailingDetailsWindow::FailingDetailsWindow()
    : documents_(resources, [this] {
        return std::make_shared<inspect::Document>(
            inspect::FileSources{resources, fileManager_, attributes_}, bundle_);
    }) {
    bundle_.storyboard("Main").addWindowScene(
        "Document Window Controller", [this](const platform::Coder& coder) {
            return details::ViewController::initWithCoder(
                coder, {resources, bookmarks_, session_, textFiles_, scripted.savePanels, pasteboard_,
                        scripted.defaults});
        });
}

platform::Result<void> FailingDetailsWindow::open() {
    auto opened = documents_.openDocumentWithContentsOfURL(scripted.url);
    if (!opened) {
        return std::unexpected(opened.error());
    }
    document_ = *opened;
    controller_ = std::dynamic_pointer_cast<details::ViewController>(
        document_->windowControllers().front()->contentViewController());
    return {};
}

void FailingDetailsWindow::showAgain() const {
    platform::Window& window = *controller_->view().window();
    window.orderOut();
    window.makeKeyAndOrderFront();
}

void FailingDetailsWindow::save(const std::string& path) {
    controller_->saveCommand(nullptr);
    scripted.savePanels.newest()->answer(platform::modalResponseOK, platform::URL::fileURLWithPath(path));
}

Fields FailingDetailsWindow::texts() const {
    const details::ReportFields fields = controller_->reportFields();
    return {
        {"windowTitle", fields.windowTitle},
        {"pathTextbox", fields.pathTextbox},
        {"volfsPathTextbox", fields.volfsPathTextbox},
        {"frURLTextbox", fields.frURLTextbox},
        {"urlDataSize", fields.urlDataSize},
        {"urlXattrSize", fields.urlXattrSize},
        {"urlTotalSize", fields.urlTotalSize},
        {"filemanSize", fields.filemanSize},
        {"xattrSize", fields.xattrSize},
        {"filemanTotalSize", fields.filemanTotalSize},
        {"permsTextbox", fields.permsTextbox},
        {"ownerNameTextbox", fields.ownerNameTextbox},
        {"ownerIDTextbox", fields.ownerIDTextbox},
        {"groupNameTextbox", fields.groupNameTextbox},
        {"groupIDTextbox", fields.groupIDTextbox},
        {"createdTextbox", fields.createdTextbox},
        {"modifiedTextbox", fields.modifiedTextbox},
        {"typeTextbox", fields.typeTextbox},
        {"refCountTextbox", fields.refCountTextbox},
        {"bookmarkTextbox", fields.bookmarkTextbox},
        {"bookmarkPathTextbox", fields.bookmarkPathTextbox},
        {"inodeText", fields.inodeText},
        {"date", fields.date ? "kept" : ""},
    };
}

Fields FailingDetailsWindow::undisturbedTexts() {
    return {
        {"windowTitle", "notes.txt"},
        {"pathTextbox", "/data/notes.txt"},
        {"volfsPathTextbox", "/.vol/2049/131077"},
        {"frURLTextbox", "file:///.file/id=72340172838076673.72340172838076673"},
        {"urlDataSize", "1000"},
        {"urlXattrSize", "300"},
        {"urlTotalSize", "1300"},
        {"filemanSize", "1001"},
        {"xattrSize", "5"},
        {"filemanTotalSize", "1006"},
        {"permsTextbox", "644"},
        {"ownerNameTextbox", "demo"},
        {"ownerIDTextbox", "1000"},
        {"groupNameTextbox", "staff"},
        {"groupIDTextbox", "50"},
        {"createdTextbox", "2001-01-01 00:00:00 +0000"},
        {"modifiedTextbox", "2024-08-09 18:27:02 +0000"},
        {"typeTextbox", "NSFileTypeRegular: public.plain-text"},
        {"refCountTextbox", "2"},
        {"bookmarkTextbox", "Ym9va21hcms="},
        {"bookmarkPathTextbox", "/data/notes.txt"},
        {"inodeText",
         "NSFileExtendedAttributes : {\n    \"user.note\" = <68656c6c 6f>;\n    \"user.x\" = <>;\n}\n"},
        {"date", "kept"},
    };
}

} // namespace tolvane::tests
