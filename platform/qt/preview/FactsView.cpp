#include "platform/qt/preview/FactsView.h"

#include "platform/qt/application/MakeChild.h"
#include "platform/qt/text/VisibleText.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace tolvane::platform {

namespace {

constexpr int factsMargin = 20;
constexpr int iconEdge = 64;

QLabel& plainLabel(QWidget* parent) {
    auto& label = makeChild<QLabel>(parent);
    label.setTextFormat(Qt::PlainText);
    return label;
}

/// A label that takes the width it is given.
QLabel& wrappedLabel(QWidget* parent) {
    auto& label = plainLabel(parent);
    label.setWordWrap(true);
    label.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

constexpr std::size_t bytesOfLine = 16;

QString hexadecimal(std::size_t number, qsizetype digits) {
    return QString::number(number, 16).rightJustified(digits, u'0');
}

QString hexLine(std::span<const std::byte> bytes, std::size_t offset) {
    constexpr qsizetype offsetDigits = 8;
    constexpr unsigned firstVisible = 0x20;
    constexpr unsigned lastVisible = 0x7E;
    QString numbers;
    QString characters;
    for (std::size_t index = 0; index < bytesOfLine; ++index) {
        numbers += index == bytesOfLine / 2 ? QStringLiteral("  ") : QStringLiteral(" ");
        if (index >= bytes.size()) {
            numbers += QStringLiteral("  ");
            continue;
        }
        const auto byte = std::to_integer<unsigned>(bytes[index]);
        numbers += hexadecimal(byte, 2);
        characters +=
            byte >= firstVisible && byte <= lastVisible ? QChar(static_cast<ushort>(byte)) : QChar(u'.');
    }
    return hexadecimal(offset, offsetDigits) + u' ' + numbers + QStringLiteral("  ") + characters;
}

} // namespace

FactsView::FactsView(QWidget* parent)
    : QWidget(parent)
    , icon_(plainLabel(this))
    , message_(wrappedLabel(this))
    , grid_(makeChild<QGridLayout>())
    , bytes_(makeChild<QPlainTextEdit>(this)) {
    auto& rows = makeChild<QVBoxLayout>(this);
    rows.setContentsMargins(factsMargin, factsMargin, factsMargin, factsMargin);
    rows.setSpacing(factsMargin);
    auto& head = makeChild<QHBoxLayout>();
    head.setSpacing(factsMargin);
    auto& texts = makeChild<QVBoxLayout>();
    texts.setSpacing(factsMargin / 2);
    grid_.setHorizontalSpacing(factsMargin);
    grid_.setVerticalSpacing(factsMargin / 4);
    grid_.setColumnStretch(1, 1);
    texts.addWidget(&message_);
    texts.addLayout(&grid_);
    texts.addStretch(1);
    head.addWidget(&icon_, 0, Qt::AlignTop);
    head.addLayout(&texts, 1);
    rows.addLayout(&head);
    rows.addWidget(&bytes_, 1);
    icon_.setFixedSize(iconEdge, iconEdge);
    message_.setAccessibleName(QStringLiteral("Message"));
    QFont bold = message_.font();
    bold.setBold(true);
    message_.setFont(bold);
    message_.hide();
    bytes_.setReadOnly(true);
    bytes_.setLineWrapMode(QPlainTextEdit::NoWrap);
    bytes_.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    bytes_.setAccessibleName(QStringLiteral("First bytes in hexadecimal"));
    bytes_.hide();
    rows.addStretch(0);
}

void FactsView::setIcon(const QIcon& icon) {
    icon_.setPixmap(icon.pixmap(QSize(iconEdge, iconEdge), devicePixelRatioF()));
}

void FactsView::setMessage(const QString& message) {
    message_.setText(message);
    message_.setVisible(!message.isEmpty());
}

void FactsView::setFacts(const std::vector<Fact>& facts) {
    const auto labels = [](const std::vector<Fact>& list) {
        std::vector<QString> names;
        std::ranges::transform(list, std::back_inserter(names), &Fact::label);
        return names;
    };
    if (labels(facts) != labels(facts_)) {
        while (QLayoutItem* const item = grid_.takeAt(0)) {
            const std::unique_ptr<QLayoutItem> owned(item);
            const std::unique_ptr<QWidget> widget(item->widget());
        }
        values_.clear();
        for (const Fact& fact : facts) {
            const int row = static_cast<int>(values_.size());
            auto& label = plainLabel(this);
            label.setText(fact.label);
            label.setForegroundRole(QPalette::PlaceholderText);
            auto& value = wrappedLabel(this);
            value.setAlignment(Qt::AlignLeft | Qt::AlignTop);
            grid_.addWidget(&label, row, 0, Qt::AlignRight | Qt::AlignTop);
            grid_.addWidget(&value, row, 1);
            values_.push_back(&value);
        }
    }
    facts_ = facts;
    for (std::size_t index = 0; index < facts.size(); ++index) {
        values_[index]->setText(breakableText(facts[index].value));
        values_[index]->setAccessibleName(facts[index].label + QStringLiteral(": ") + facts[index].value);
    }
}

void FactsView::setBytes(std::span<const std::byte> bytes) {
    bytes_.setPlainText(hexDump(bytes));
    bytes_.setVisible(!bytes.empty());
}

QString hexDump(std::span<const std::byte> bytes) {
    QString text;
    for (std::size_t offset = 0; offset < bytes.size(); offset += bytesOfLine) {
        text += offset == 0 ? QString() : QStringLiteral("\n");
        text += hexLine(bytes.subspan(offset, std::min(bytesOfLine, bytes.size() - offset)), offset);
    }
    return text;
}

} // namespace tolvane::platform
