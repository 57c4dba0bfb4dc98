#include "platform/qt/preview/VisibleText.h"

#include "platform/Utf8.h"

#include <QChar>

namespace tolvane::platform {

namespace {

constexpr char32_t pictureOfNull = 0x2400;
constexpr char32_t pictureOfDelete = 0x2421;
constexpr char32_t deleteCharacter = 0x7F;
constexpr char32_t space = 0x20;

} // namespace

bool isHiddenCharacter(char32_t character) {
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        break;
    }
    // Letters by category, but drawn as nothing.
    return character == 0x115F || character == 0x1160 || character == 0x3164 || character == 0xFFA0
           || character == 0x034F;
}

void appendVisibly(QString& text, char32_t character) {
    if (!isHiddenCharacter(character)) {
        text += QChar::fromUcs4(character);
    } else if (character < space) {
        text += QChar::fromUcs4(pictureOfNull + character);
    } else if (character == deleteCharacter) {
        text += QChar::fromUcs4(pictureOfDelete);
    } else {
        constexpr int digits = 4;
        text += QStringLiteral("‹U+%1›").arg(
            QString::number(static_cast<uint>(character), 16).toUpper().rightJustified(digits, u'0'));
    }
}

QString visibleText(std::string_view bytes) {
    QString text;
    while (!bytes.empty()) {
        const DecodedCharacter character = decodeFirstCharacter(bytes);
        appendVisibly(text, character.codePoint);
        bytes.remove_prefix(character.length);
    }
    return text;
}

QString breakableText(const QString& text) {
    constexpr QChar chance(0x200B);
    constexpr int longestStretch = 16;
    QString result;
    int stretch = 0;
    for (const QChar character : text) {
        const bool isWithinPair = character.isLowSurrogate() || character.isMark();
        if (stretch >= longestStretch && !isWithinPair) {
            result += chance;
            stretch = 0;
        }
        result += character;
        stretch = character == u' ' ? 0 : stretch + 1;
        if (character == u'/') {
            result += chance;
            stretch = 0;
        }
    }
    return result;
}

} // namespace tolvane::platform
