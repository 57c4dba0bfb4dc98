#include "platform/qt/panels/SaveFileDialog.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/panels/AlertBox.h"
#include "platform/qt/panels/FileDialogSetup.h"
#include "platform/qt/panels/RawPath.h"
#include "platform/qt/text/VisibleText.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace tolvane::platform {

namespace {

const QString& allFiles() {
    static const QString filter = QStringLiteral("All files (*)");
    return filter;
}

QStringList filtersFor(const std::vector<std::string>& extensions) {
    if (extensions.empty()) {
        return {allFiles()};
    }
    QStringList patterns;
    for (const std::string& extension : extensions) {
        patterns.append(QStringLiteral("*.") + QString::fromStdString(extension));
    }
    QString title = QString::fromStdString(extensions.front());
    title.replace(0, 1, title.left(1).toUpper());
    return {title + QStringLiteral(" (") + patterns.join(u' ') + u')', allFiles()};
}

bool hasExtension(const QString& name, const std::string& extension) {
    const QString ending = u'.' + QString::fromStdString(extension);
    return name.size() > ending.size() && name.endsWith(ending, Qt::CaseInsensitive);
}

bool hasOneOf(const QString& name, const std::vector<std::string>& extensions) {
    return std::ranges::any_of(
        extensions, [&](const auto& extension) { return hasExtension(name, extension); });
}

QString inQuotes(const QString& name) {
    return u'“' + name + u'”';
}

} // namespace

QString nameWithExtension(const QString& name, const std::vector<std::string>& extensions) {
    if (extensions.empty() || hasOneOf(name, extensions)) {
        return name;
    }
    return name + u'.' + QString::fromStdString(extensions.front());
}

SaveFileDialog::SaveFileDialog(SavePanelSettings settings, QWidget* parent)
    : QFileDialog(parent)
    , settings_(std::move(settings)) {
    setUpFileDialog(*this, settings_.places);
    setOption(QFileDialog::ReadOnly, !settings_.canCreateDirectories);
    setWindowTitle(QStringLiteral("Save"));
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    setNameFilters(filtersFor(settings_.extensions));
    // Qt cannot show a folder whose name is not UTF-8, and cannot start in one that is gone.
    const QString folder = settings_.folder ? qtPath(*settings_.folder) : QString();
    setDirectory(QFileInfo(folder).isDir() ? folder : QDir::homePath());

    nameField_ = findChild<QLineEdit*>();
    QObject::connect(nameField_, &QLineEdit::textChanged, this, [this](const QString& text) {
        const QString harmless = harmlessName(text);
        if (harmless != text) {
            const int cursor = nameField_->cursorPosition();
            nameField_->setText(harmless);
            nameField_->setCursorPosition(cursor);
        }
    });
    for (QAbstractItemView* const view : folderViewsOf(*this)) {
        QObject::connect(view, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
            const QString path = index.data(QFileSystemModel::FilePathRole).toString();
            if (!QFileInfo(path).isDir()) {
                nameField_->setText(path.mid(path.lastIndexOf(u'/') + 1));
            }
        });
    }
    proposeName();
}

void SaveFileDialog::proposeName() {
    const QString name = harmlessName(QString::fromStdString(settings_.name)).replace(u'/', u'_');
    nameField_->setText(name);
    const qsizetype stem = hasOneOf(name, settings_.extensions) ? name.lastIndexOf(u'.') : name.size();
    nameField_->setSelection(0, static_cast<int>(stem));
}

void SaveFileDialog::setVisible(bool visible) {
    QFileDialog::setVisible(visible);
    if (visible) {
        nameField_->setFocus();
        proposeName();
    }
}

void SaveFileDialog::accept() {
    const QString text = nameField_->text();
    if (text.isEmpty()) {
        return;
    }
    const QString typed = pathOfFieldText(text, directory().absolutePath());
    if (QFileInfo(typed).isDir()) {
        setDirectory(typed);
        proposeName();
        return;
    }
    const qsizetype nameStart = typed.lastIndexOf(u'/') + 1;
    const QString typedName = typed.mid(nameStart);
    const QString name =
        selectedNameFilter() == allFiles() ? typedName : nameWithExtension(typedName, settings_.extensions);
    const auto destination = URLForNewItemAtPath(typed.left(nameStart) + name);
    if (!destination) {
        complain(
            QStringLiteral("The folder %1 was not found.")
                .arg(inQuotes(typed.left(std::max<qsizetype>(nameStart - 1, 1)))),
            QStringLiteral("Choose an existing folder, or create it first."));
        return;
    }
    if (isFolder(*destination)) {
        complain(
            QStringLiteral("%1 is a folder.").arg(inQuotes(name)),
            QStringLiteral("A folder cannot be replaced with a file. Choose another name."));
        return;
    }
    if (!isThere(*destination)) {
        finish(*destination);
        return;
    }
    askBeforeReplacing(*destination, name);
}

void SaveFileDialog::askBeforeReplacing(const URL& item, const QString& name) {
    const bool isSubject = settings_.subject && isSameItem(item, *settings_.subject);
    const QString message = isSubject ? QStringLiteral("%1 is the file that the report is about. Do you want "
                                                       "to replace it with its own report?")
                                      : QStringLiteral("%1 already exists. Do you want to replace it?");
    ask({message.arg(inQuotes(name)).toStdString(),
         isSubject ? "Its current contents would be lost, and the report would stand in their place."
                   : "Replacing it overwrites its current contents.",
         AlertStyle::warning,
         {"Replace", "Cancel"}},
        [this, item] { finish(item); });
}

void SaveFileDialog::finish(URL destination) {
    chosen_ = std::move(destination);
    // Not Qt's own acceptance, which would decide all this again in its way.
    done(QDialog::Accepted);
}

void SaveFileDialog::complain(const QString& message, const QString& informative) {
    ask({message.toStdString(), informative.toStdString(), AlertStyle::warning, {"OK"}}, nullptr);
}

void SaveFileDialog::ask(const Alert& alert, std::function<void()> agreed) {
    AlertBox& box = makeChild<AlertBox>(alert, this);
    box.setAttribute(Qt::WA_DeleteOnClose);
    // Return alone is not to destroy anything.
    box.setDefaultButton(qobject_cast<QPushButton*>(box.escapeButton()));
    QObject::connect(&box, &QDialog::finished, this, [&box, agreed = std::move(agreed)] {
        if (agreed && box.answer() == 0) {
            agreed();
        }
    });
    box.open();
}

} // namespace tolvane::platform
