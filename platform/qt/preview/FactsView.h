#pragma once

#include "platform/qt/preview/ItemExamination.h"

#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QString>
#include <QWidget>

#include <cstddef>
#include <span>
#include <vector>

class QGridLayout;

namespace tolvane::platform {

/// An item whose contents are not shown: an icon, a sentence, facts in two columns, the first bytes.
class FactsView final : public QWidget {
public:
    explicit FactsView(QWidget* parent = nullptr);

    void setIcon(const QIcon& icon);

    /// Says why no more is shown, or what is going on; hidden if empty.
    void setMessage(const QString& message);
    void setFacts(const std::vector<Fact>& facts);

    /// Hidden if empty.
    void setBytes(std::span<const std::byte> bytes);

    QString message() const { return message_.text(); }
    const std::vector<Fact>& facts() const { return facts_; }
    QString bytesText() const { return bytes_.isVisibleTo(this) ? bytes_.toPlainText() : QString(); }

private:
    QLabel& icon_;
    QLabel& message_;
    QGridLayout& grid_;
    QPlainTextEdit& bytes_;
    std::vector<Fact> facts_;
    std::vector<QLabel*> values_;
};

/// Bytes as lines of sixteen: the offset, each byte in hexadecimal, and as ASCII, with a dot for others.
QString hexDump(std::span<const std::byte> bytes);

} // namespace tolvane::platform
