#pragma once

#include "platform/model/AttributedString.h"

#include <QTextBlock>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>

#include <string>
#include <string_view>

/// Text in a QTextDocument that can be read back to the byte.
///
/// Ordinary characters are themselves and a line feed ends a block. A very long line continues in further
/// blocks, since Qt lays out each block as a whole; their borders are no bytes. What a document would change,
/// or what is invisible or misleading, becomes a token: visible text whose character format stores the
/// character or byte. Undo restores formats, and so the bytes.
namespace tolvane::platform {

enum class TokenStyle {
    words,            ///< Such as ⟨U+202E⟩, ⟨CR⟩ or ⟨byte FF⟩. Only for text that the user cannot edit.
    singleCharacters, ///< One character for each token, so that one press of Backspace removes one.
};

/// Replaces the cursor's selection. `base` is an `ordinaryFormat`. Returns whether there were tokens. A
/// single character, which may be a typed one, never begins another block, so that undo takes it as typed.
bool insertExactText(
    QTextCursor& cursor, std::string_view bytes, const QTextCharFormat& base, TokenStyle style);

/// The document as displayed, with its tokens.
QString displayedText(const QTextDocument& document);

/// The bytes of the whole document.
std::string exactText(const QTextDocument& document);

/// The bytes between two positions, including all of a token or character that is only partly in between.
std::string exactText(const QTextDocument& document, int from, int to);

/// The bytes of the whole document with the attributes that `attributesFormat` gave them.
AttributedString exactContent(const QTextDocument& document);

/// The format for attributes: without a font the document's own; colours are the palette's.
QTextCharFormat attributesFormat(const TextAttributes& attributes);

/// True for the format of a token.
bool isToken(const QTextCharFormat& format);

/// The format for ordinary text beside a text of this format.
QTextCharFormat ordinaryFormat(QTextCharFormat format);

/// True for a block that goes on with the line of the block before it.
bool continuesLine(const QTextBlock& block);

} // namespace tolvane::platform
