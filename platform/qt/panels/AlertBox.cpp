#include "platform/qt/panels/AlertBox.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/text/TextFieldWidget.h"
#include "platform/qt/text/VisibleText.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QList>
#include <QPushButton>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <memory>
#include <numeric>

namespace tolvane::platform {

namespace {

constexpr const char* indexProperty = "alertButtonIndex";
constexpr qsizetype longestText = 600;
constexpr qsizetype mostLines = 12;
/// A line of a list may always have as much.
constexpr qsizetype lineLength = 100;

QMessageBox::Icon iconOfStyle(AlertStyle style) {
    switch (style) {
    case AlertStyle::informational:
        return QMessageBox::Information;
    case AlertStyle::critical:
        return QMessageBox::Critical;
    default:
        return QMessageBox::Warning;
    }
}

QString shown(const std::string& text, LineFeeds lineFeeds) {
    const QString visible = visibleText(QString::fromStdString(text), lineFeeds);
    QStringList lines = visible.split(u'\n');
    if (lines.size() <= mostLines) {
        // The longest lines give way first.
        const auto lengthWith = [&lines](qsizetype longest) {
            return std::accumulate(
                lines.begin(), lines.end(), qsizetype{0},
                [longest](auto sum, const auto& line) { return sum + std::min(line.size(), longest); });
        };
        qsizetype longest = longestText;
        while (longest > lineLength && lengthWith(longest) > longestText) {
            --longest;
        }
        std::ranges::transform(
            lines, lines.begin(), [longest](const auto& line) { return cutInMiddle(line, longest); });
    }
    return boundedText(lines.join(u'\n'), std::max(longestText, mostLines * lineLength), mostLines);
}

QMessageBox::ButtonRole roleOfButton(std::size_t index, std::size_t cancelButton) {
    if (index == cancelButton && index != 0) {
        return QMessageBox::RejectRole;
    }
    return index == 0 ? QMessageBox::AcceptRole : QMessageBox::ActionRole;
}

} // namespace

AlertBox::AlertBox(const Alert& alert, QWidget* parent) : QMessageBox(parent) {
    setIcon(iconOfStyle(alert.style));
    // Window managers and task bars have nothing else to call it by.
    setWindowTitle(QGuiApplication::applicationDisplayName());
    // QMessageBox has no text format for its informative text, which could be taken for HTML, so it is set on
    // the labels.
    setText(shown(alert.messageText, LineFeeds::shown));
    setInformativeText(shown(alert.informativeText, LineFeeds::kept));
    for (QLabel* label : findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::NoTextInteraction);
    }
    if (alert.isInformativeTextExact) {
        showExactly(alert.informativeText);
    }

    const std::vector<std::string> titles =
        alert.buttons.empty() ? std::vector<std::string>{"OK"} : alert.buttons;
    cancelButton_ = std::min(alert.cancelButton.value_or(titles.size() - 1), titles.size() - 1);
    for (std::size_t i = 0; i < titles.size(); ++i) {
        const QString title = QString::fromStdString(titles[i]).replace(u'&', QStringLiteral("&&"));
        QPushButton* button = addButton(title, roleOfButton(i, cancelButton_));
        button->setProperty(indexProperty, static_cast<qulonglong>(i));
        if (i == 0) {
            setDefaultButton(button);
        }
        if (i == cancelButton_) {
            setEscapeButton(button);
        }
    }
}

void AlertBox::showExactly(const std::string& text) {
    // The message box has a place for its own label only.
    const QList<QLabel*> labels = findChildren<QLabel*>();
    const auto place = std::ranges::find_if(
        labels, [this](const QLabel* label) { return label->text() == informativeText(); });
    if (text.empty() || place == labels.end()) {
        return;
    }
    constexpr int mostLinesAtOnce = 12;
    constexpr int charactersWide = 60;
    auto& field = makeChild<TextFieldWidget>(this);
    field.setObjectName(QStringLiteral("exactText"));
    field.setAccessibleName(QStringLiteral("Text"));
    field.setFrameShape(QFrame::StyledPanel);
    field.setMaximumLines(mostLinesAtOnce);
    field.setMinimumWidth(field.fontMetrics().averageCharWidth() * charactersWide);
    field.setText(text);
    const std::unique_ptr<QLayoutItem> replaced(layout()->replaceWidget(*place, &field));
    (*place)->hide();
}

void AlertBox::addDetails(const std::string& details) {
    // The message box shows these as plain text.
    setDetailedText(visibleText(QString::fromStdString(details), LineFeeds::kept));
}

std::size_t AlertBox::answer() const {
    const QAbstractButton* button = clickedButton();
    return button == nullptr ? cancelButton_
                             : static_cast<std::size_t>(button->property(indexProperty).toULongLong());
}

} // namespace tolvane::platform
