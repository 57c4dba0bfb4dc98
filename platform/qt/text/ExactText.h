#pragma once

#include "platform/model/AttributedString.h"

#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>

#include <string>
#include <string_view>

/// Text in a QTextDocument that can be read back to the byte.
///
/// Ordinary characters stand for themselves and a line feed ends a block. Where nobody edits the text, a very
/// long line goes on in further blocks, since a document lays out each of its blocks as a whole. What a
/// document would change, or what a reader would not see for what it is, becomes a token: visible text whose
/// character format carries the character or byte that it stands for. Since formats come back with undo, so
/// do the bytes.
namespace tolvane::platform {

enum class TokenStyle {
    words,            ///< Such as ⟨U+202E⟩, ⟨CR⟩ or ⟨byte FF⟩. Only for text that the user cannot edit.
    singleCharacters, ///< One character for each token, so that one press of Backspace removes one.
};

/// Inserts text, to the byte, in place of what the cursor has selected. `base` must carry no token. Tells
/// whether any of the text became a token.
bool insertExactText(
    QTextCursor& cursor, std::string_view bytes, const QTextCharFormat& base, TokenStyle style);

/// The document as it looks, with tokens for what they stand for.
QString displayedText(const QTextDocument& document);

/// The bytes of the whole document.
std::string exactText(const QTextDocument& document);

/// The bytes between two positions. A token or character that lies there only in part is taken whole.
std::string exactText(const QTextDocument& document, int from, int to);

/// The bytes of the whole document with the attributes that `attributesFormat` gave them.
AttributedString exactContent(const QTextDocument& document);

/// How a document shows text of these attributes: an absent font is the document's own, and the text colour
/// is left to the palette.
QTextCharFormat attributesFormat(const TextAttributes& attributes);

/// True for the format of a token.
bool isToken(const QTextCharFormat& format);

/// The format for ordinary text beside a text of this format.
QTextCharFormat withoutToken(QTextCharFormat format);

} // namespace tolvane::platform
