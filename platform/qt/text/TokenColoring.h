#pragma once

#include <QSyntaxHighlighter>

namespace tolvane::platform {

/// Colours the tokens of exact text (ExactText.h) outside the document, so a new palette changes neither text
/// nor undo steps: after it, `rehighlight`.
class TokenColoring final : public QSyntaxHighlighter {
public:
    /// The widget, whose palette counts, outlives this.
    TokenColoring(const QWidget& widget, QTextDocument* document)
        : QSyntaxHighlighter(document)
        , widget_(widget) {}

protected:
    void highlightBlock(const QString& text) override;

private:
    const QWidget& widget_;
};

} // namespace tolvane::platform
