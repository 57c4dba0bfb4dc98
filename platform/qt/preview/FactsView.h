#pragma once

#include "platform/qt/preview/ItemExamination.h"

#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QWidget>

#include <cstddef>
#include <span>
#include <vector>

class QGridLayout;

namespace tolvane::platform {

/// What there is to say of an item that is not shown itself: an icon, a sentence, facts in two columns, and
/// the first bytes where it has any.
class FactsView final : public QWidget {
public:
    explicit FactsView(QWidget* parent = nullptr);

    void setIcon(const QIcon& icon);

    /// Says why there is no more to see, or what goes on; empty for nothing to say.
    void setMessage(const QString& message);
    void setFacts(const std::vector<Fact>& facts);

    /// No bytes, no place for them.
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

} // namespace tolvane::platform
