#include "platform/qt/windows/QtStoryboard.h"

#include "platform/qt/application/QtApplication.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/TextViewWidget.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/Mirrors.h"
#include "platform/qt/windows/TableWidget.h"
#include "platform/qt/windows/WindowFrontEnd.h"

#include <QAbstractButton>
#include <QList>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <iterator>
#include <utility>
#include <variant>
#include <vector>

namespace tolvane::platform {

namespace {

constexpr auto noteOf = "noteOf";

/// Each gives a new control what the form's widget holds.
void takeContent(TextField& field, const TextFieldWidget& widget) {
    field.setStringValue(widget.text());
}
void takeContent(TextView& view, const TextViewWidget& widget) {
    view.textStorage()->setAttributedString(widget.content());
}
void takeContent(TextField& field, const QLabel& widget) {
    field.setStringValue(widget.text().toStdString());
}
void takeContent(TextField& field, const QLineEdit& widget) {
    field.setStringValue(widget.text().toStdString());
}
/// Forms cannot fill these.
void takeContent(Table& /*table*/, const TableWidget& /*widget*/) {}
void takeContent(ProgressIndicator& /*indicator*/, const QProgressBar& /*widget*/) {}
void takeContent(Button& button, const QAbstractButton& widget) {
    button.setState(widget.isChecked() ? ButtonState::on : ButtonState::off);
}

/// Connects outlets to new controls, and these to the form's widgets of the same name.
class Connector {
public:
    Connector(const QWidget& form, View& view, WindowFrontEnd& frontEnd)
        : form_(form)
        , view_(view)
        , frontEnd_(frontEnd) {
        const QList<QWidget*> widgets = form.findChildren<QWidget*>();
        std::ranges::copy_if(widgets, std::back_inserter(noteWidgets_), [](const QWidget* widget) {
            return widget->property(noteOf).isValid();
        });
    }

    void connect(const OutletTable::Entry& entry) {
        const QString name =
            QString::fromLatin1(entry.name.data(), static_cast<qsizetype>(entry.name.size()));
        QWidget* const widget = form_.findChild<QWidget*>(name);
        if (widget != nullptr) {
            std::visit([this, widget](auto* outlet) { connectTo(*outlet, *widget); }, entry.outlet);
        }
    }

private:
    void connectTo(Outlet<TextField>& outlet, QWidget& widget) {
        if (dynamic_cast<QLineEdit*>(&widget) != nullptr) {
            mirror<EntryMirror, QLineEdit>(outlet, widget);
        } else if (dynamic_cast<QLabel*>(&widget) != nullptr) {
            mirror<LabelMirror, QLabel>(outlet, widget);
        } else {
            mirror<TextFieldMirror, TextFieldWidget>(outlet, widget);
        }
        if (outlet.isConnected()) {
            connectNotes(*outlet, widget.objectName());
        }
    }
    void connectTo(Outlet<TextView>& outlet, QWidget& widget) {
        mirror<TextViewMirror, TextViewWidget>(outlet, widget);
    }
    void connectTo(Outlet<Button>& outlet, QWidget& widget) {
        mirror<ButtonMirror, QAbstractButton>(outlet, widget);
    }
    void connectTo(Outlet<Table>& outlet, QWidget& widget) {
        mirror<TableMirror, TableWidget>(outlet, widget);
    }
    void connectTo(Outlet<ProgressIndicator>& outlet, QWidget& widget) {
        mirror<ProgressMirror, QProgressBar>(outlet, widget);
    }
    void connectTo(Outlet<ScrollView>& outlet, QWidget& /*widget*/) {
        outlet.connect(view_.addControl<ScrollView>());
    }

    void connectNotes(TextField& field, const QString& name) {
        std::vector<QWidget*> notes;
        std::ranges::copy_if(noteWidgets_, std::back_inserter(notes), [&name](const QWidget* widget) {
            return widget->property(noteOf).toString() == name;
        });
        if (!notes.empty()) {
            frontEnd_.keep(std::make_shared<NoteMirror>(field, notes));
        }
    }

    template <typename Mirror, typename Widget, typename Model>
    void mirror(Outlet<Model>& outlet, QWidget& widget) {
        if (auto* const shown = dynamic_cast<Widget*>(&widget)) {
            Model& model = view_.addControl<Model>();
            takeContent(model, *shown);
            outlet.connect(model);
            frontEnd_.keep(std::make_shared<Mirror>(model, *shown));
        }
    }

    const QWidget& form_;
    View& view_;
    WindowFrontEnd& frontEnd_;
    std::vector<QWidget*> noteWidgets_;
};

Rect rectOf(const QRect& rect) {
    return {
        static_cast<double>(rect.x()), static_cast<double>(rect.y()), static_cast<double>(rect.width()),
        static_cast<double>(rect.height())};
}

} // namespace

void QtStoryboard::addWindowScene(
    std::string identifier, ContentMaker content, Form form, WindowMaker makeWindow) {
    scenes_.insert_or_assign(
        std::move(identifier), Scene{std::move(content), std::move(form), std::move(makeWindow)});
}

std::shared_ptr<Controller> QtStoryboard::instantiateControllerWithIdentifier(
    std::string_view identifier) const {
    const auto found = scenes_.find(identifier);
    if (found == scenes_.end()) {
        return nullptr;
    }
    const auto& [name, scene] = *found;

    auto widget = std::make_unique<MainWindow>(application_, name);
    scene.form(*widget);
    const std::shared_ptr<Window> window = scene.makeWindow(
        rectOf(widget->geometry()),
        windowStyleMaskTitled | windowStyleMaskClosable | windowStyleMaskMiniaturizable
            | windowStyleMaskResizable,
        BackingStore::buffered, true);
    window->setTitle(widget->windowTitle().toStdString());

    std::shared_ptr<ContentController> content = scene.content(Coder{name});
    MainWindow& shown = *widget;
    auto frontEnd = std::make_shared<WindowFrontEnd>(application_, std::move(widget), window, content);
    Connector connector(shown, content->view(), *frontEnd);
    for (const OutletTable::Entry& entry : content->outlets().entries()) {
        connector.connect(entry);
    }
    // Only now are the targets of actions known.
    shown.formIsComplete();
    content->view().setFrontEnd(std::move(frontEnd));
    return WindowController::make(window, std::move(content));
}

} // namespace tolvane::platform
