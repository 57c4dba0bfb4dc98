#pragma once

#include <QString>

#include <string_view>

/// Text from outside as it may be shown: what would act on its surroundings is made visible instead.
namespace tolvane::platform {

/// True for characters that a reader could not see, or that change how what stands around them is shown: the
/// controls, marks and overrides of direction, separators of lines, characters without width, tags.
bool isHiddenCharacter(char32_t character);

/// Appends a character, a hidden one as its picture ("␛") or by its number ("‹U+202E›").
void appendVisibly(QString& text, char32_t character);

/// Bytes that should be UTF-8, with U+FFFD in place of what cannot be read and every hidden character made
/// visible; always a single line.
QString visibleText(std::string_view bytes);

/// The same text with chances for a line break in it, so that a long name cannot force a window wide. For
/// labels alone: the breaks are characters.
QString breakableText(const QString& text);

} // namespace tolvane::platform
