#include "platform/qt/text/ExactText.h"

#include "platform/qt/text/VisibleText.h"
#include "platform/values/HiddenCharacters.h"
#include "platform/values/Utf8.h"

#include <QFontDatabase>
#include <QString>
#include <QTextBlock>
#include <QTextFragment>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace tolvane::platform {

namespace {

/// The code point of a token, or an invalid byte.
using TokenValue = int;
constexpr TokenValue firstByteValue = 0x110000;
constexpr char32_t noBreakSpace = 0xA0;
constexpr char32_t deleteCharacter = 0x7F;

constexpr int tokenValueProperty = QTextFormat::UserProperty + 1;
constexpr int tokenWidthProperty = QTextFormat::UserProperty + 2;
constexpr int colorProperty = QTextFormat::UserProperty + 3;
constexpr int fontSizeProperty = QTextFormat::UserProperty + 4;
constexpr int seamProperty = QTextFormat::UserProperty + 5;

/// A longer line continues in another block.
constexpr qsizetype longestBlock = 4096;

/// Borders of blocks are characters. Their formats, unlike those of the blocks, stay with them whatever is
/// removed on either side.
QTextCharFormat seamFormat(QTextCharFormat format) {
    format.setProperty(seamProperty, true);
    return format;
}

/// What becomes a token.
bool needsToken(char32_t codePoint, TokenStyle style) {
    if (codePoint == U'\t' || codePoint == U'\n') {
        return false;
    }
    // Read-only text shows it as a blank; in editable text the two must be distinguishable.
    if (codePoint == noBreakSpace) {
        return style == TokenStyle::singleCharacters;
    }
    return isHiddenCharacter(codePoint);
}

QString tokenWord(TokenValue value) {
    if (value < firstByteValue) {
        return writtenOut(static_cast<char32_t>(value));
    }
    constexpr int base = 16;
    const QString number = QString::number(value - firstByteValue, base).toUpper();
    return QStringLiteral("⟨byte %1⟩").arg(number.rightJustified(2, QLatin1Char('0')));
}

QChar tokenCharacter(TokenValue value) {
    constexpr char32_t firstControlPicture = 0x2400;
    constexpr char32_t deletePicture = 0x2421;
    constexpr char32_t shoulderedOpenBox = 0x237D;
    const auto codePoint = static_cast<char32_t>(value);
    char32_t shown = QChar::ReplacementCharacter;
    if (codePoint < 0x20) {
        shown = firstControlPicture + codePoint;
    } else if (codePoint == deleteCharacter) {
        shown = deletePicture;
    } else if (codePoint == noBreakSpace) {
        shown = shoulderedOpenBox;
    }
    return QChar(static_cast<char16_t>(shown));
}

QString tokenText(TokenValue value, TokenStyle style) {
    return style == TokenStyle::words ? tokenWord(value) : QString(tokenCharacter(value));
}

std::string tokenBytes(TokenValue value) {
    std::string bytes;
    if (value >= firstByteValue) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(value - firstByteValue)));
        return bytes;
    }
    appendUtf8(bytes, static_cast<char32_t>(value));
    return bytes;
}

/// Where the range from..to lies in a text that begins at `start`, as offsets into it.
struct Span {
    qsizetype from;
    qsizetype to;
};

std::string plainBytes(const QString& text, Span span) {
    // No half of a surrogate pair.
    if (span.from > 0 && text.at(span.from).isLowSurrogate() && text.at(span.from - 1).isHighSurrogate()) {
        --span.from;
    }
    if (span.to < text.size() && text.at(span.to).isLowSurrogate()
        && text.at(span.to - 1).isHighSurrogate()) {
        ++span.to;
    }
    return QStringView(text).sliced(span.from, span.to - span.from).toUtf8().toStdString();
}

/// Equal tokens side by side come as one fragment, in which each is as long as the others.
std::string fragmentBytes(const QTextFragment& fragment, Span span) {
    const QTextCharFormat format = fragment.charFormat();
    const QString text = fragment.text();
    if (!isToken(format)) {
        return plainBytes(text, span);
    }
    const TokenValue value = format.intProperty(tokenValueProperty);
    const qsizetype width = format.intProperty(tokenWidthProperty);
    const std::string token = tokenBytes(value);
    std::string bytes;
    if (width == 1) {
        // Text typed beside a token, not through the widget, has its format but is itself.
        const QChar character = tokenCharacter(value);
        for (qsizetype i = span.from; i < span.to; ++i) {
            bytes += text.at(i) == character ? token : plainBytes(text, {i, i + 1});
        }
        return bytes;
    }
    for (qsizetype i = span.from / width; i * width < span.to; ++i) {
        bytes += token;
    }
    return bytes;
}

bool isSeam(const QTextCharFormat& format) {
    return format.hasProperty(seamProperty);
}

/// Calls the function with the bytes and format of each piece between two positions, in order.
template <typename Function>
void forEachPiece(const QTextDocument& document, int from, int to, const Function& function) {
    QTextBlock block = document.findBlock(from);
    // Counted here, since blocks and fragments search for their positions.
    int start = block.position();
    while (block.isValid() && start < to) {
        const int end = start + block.length();
        for (auto i = block.begin(); !i.atEnd(); ++i) {
            const QTextFragment fragment = i.fragment();
            const int length = fragment.length();
            const Span span{std::max(from, start) - start, std::min(to, start + length) - start};
            if (span.from < span.to) {
                function(fragmentBytes(fragment, span), fragment.charFormat());
            }
            start += length;
        }
        start = end;
        block = block.next();
        // A block's character format is that of the border before it.
        if (block.isValid() && from < start && start <= to) {
            if (const QTextCharFormat border = block.charFormat(); !isSeam(border)) {
                function(std::string("\n"), border);
            }
        }
    }
}

int endOf(const QTextDocument& document) {
    return document.characterCount() - 1;
}

TextAttributes attributesOf(const QTextCharFormat& format) {
    TextAttributes attributes;
    if (format.boolProperty(colorProperty)) {
        attributes.foregroundColor = Color::textColor;
    }
    if (format.hasProperty(fontSizeProperty)) {
        attributes.font = Font::systemFontOfSize(format.doubleProperty(fontSizeProperty));
    }
    return attributes;
}

/// Inserts pieces at a cursor, equal tokens side by side at once.
class PieceInserter {
public:
    PieceInserter(QTextCursor& cursor, const QTextCharFormat& base, TokenStyle style, bool cutsLines)
        : cursor_(cursor)
        , base_(base)
        , style_(style)
        , cutsLines_(cutsLines) {}

    void addOrdinary(std::string_view text) {
        if (!text.empty()) {
            finish();
            insert(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), base_, 1);
        }
    }

    void addToken(TokenValue value) {
        if (value != value_) {
            finish();
            value_ = value;
        }
        tokens_ += tokenText(value, style_);
    }

    void finish() {
        if (!tokens_.isEmpty()) {
            QTextCharFormat format = base_;
            format.setProperty(tokenValueProperty, value_);
            const qsizetype width = tokenText(value_, style_).size();
            format.setProperty(tokenWidthProperty, static_cast<int>(width));
            insert(tokens_, format, width);
            tokens_.clear();
        }
    }

private:
    /// The text is cut after a multiple of the unit.
    void insert(const QString& text, const QTextCharFormat& format, qsizetype unit) {
        if (!cutsLines_ || fitsAsItIs(text)) {
            cursor_.insertText(text, format);
            return;
        }
        QStringView rest = text;
        while (!rest.isEmpty()) {
            const qsizetype most = std::max<qsizetype>(room(), 0);
            // Not searched beyond what fits, lest a long line be searched again for every piece.
            const QStringView fitting = rest.first(std::min(most + 1, rest.size()));
            const qsizetype lineFeed = fitting.indexOf(u'\n');
            const bool isCut = lineFeed < 0 && fitting.size() > most;
            const qsizetype line = lineFeed < 0 ? fitting.size() : lineFeed;
            const qsizetype length = isCut ? lengthOfCut(rest, unit) : line;
            cursor_.insertText(rest.first(length).toString(), format);
            rest = rest.sliced(length);
            if (isCut) {
                cursor_.insertBlock(QTextBlockFormat(), seamFormat(base_));
            } else if (lineFeed >= 0) {
                cursor_.insertBlock(QTextBlockFormat(), format);
                rest = rest.sliced(1);
            }
        }
    }

    qsizetype room() const { return longestBlock - cursor_.positionInBlock(); }

    bool fitsAsItIs(QStringView text) const {
        qsizetype left = room();
        for (const QChar character : text) {
            left = character == u'\n' ? longestBlock : left - 1;
            if (left < 0) {
                return false;
            }
        }
        return true;
    }

    /// How much of a line that does not fit goes into this block: as much as possible, up to a blank near the
    /// end, if any.
    qsizetype lengthOfCut(QStringView line, qsizetype unit) const {
        const qsizetype most = std::max<qsizetype>(room(), 0) / unit * unit;
        if (unit > 1) {
            return most;
        }
        constexpr qsizetype nearTheEnd = longestBlock / 8;
        for (qsizetype length = most; length > 0 && most - length < nearTheEnd; --length) {
            if (line[length - 1] == u' ') {
                return length;
            }
        }
        qsizetype length = most;
        while (length > 0 && (line[length].isLowSurrogate() || line[length].isMark())) {
            --length;
        }
        return length == 0 && cursor_.atBlockStart() ? most : length;
    }

    QTextCursor& cursor_;
    const QTextCharFormat& base_;
    TokenStyle style_;
    bool cutsLines_;
    QString tokens_;
    TokenValue value_ = 0;
};

} // namespace

bool insertExactText(
    QTextCursor& cursor, std::string_view bytes, const QTextCharFormat& base, TokenStyle style) {
    cursor.removeSelectedText();
    const bool isSingleCharacter = decodeFirstCharacter(bytes).length == bytes.size();
    PieceInserter inserter(cursor, base, style, !isSingleCharacter);
    bool hasTokens = false;
    std::size_t ordinaryStart = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        // Decoding what needs none would take a quarter of the time of a long text.
        if (bytes[at] >= ' ' && bytes[at] <= '~') {
            ++at;
            continue;
        }
        const DecodedCharacter character = decodeFirstCharacter(bytes.substr(at));
        const std::size_t next = at + character.length;
        if (!character.valid || needsToken(character.codePoint, style)) {
            inserter.addOrdinary(bytes.substr(ordinaryStart, at - ordinaryStart));
            ordinaryStart = next;
            hasTokens = true;
            if (character.valid) {
                inserter.addToken(static_cast<TokenValue>(character.codePoint));
            } else {
                for (const char byte : bytes.substr(at, character.length)) {
                    inserter.addToken(firstByteValue + static_cast<unsigned char>(byte));
                }
            }
        }
        at = next;
    }
    inserter.addOrdinary(bytes.substr(ordinaryStart));
    inserter.finish();
    return hasTokens;
}

QString displayedText(const QTextDocument& document) {
    QString text;
    for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next()) {
        if (block.blockNumber() > 0 && !continuesLine(block)) {
            text += u'\n';
        }
        text += block.text();
    }
    return text;
}

std::string exactText(const QTextDocument& document) {
    return exactText(document, 0, endOf(document));
}

std::string exactText(const QTextDocument& document, int from, int to) {
    std::string text;
    forEachPiece(
        document, from, to, [&](const std::string& bytes, const QTextCharFormat&) { text += bytes; });
    return text;
}

AttributedString exactContent(const QTextDocument& document) {
    AttributedString content;
    forEachPiece(document, 0, endOf(document), [&](std::string bytes, const QTextCharFormat& format) {
        content.append({std::move(bytes), attributesOf(format)});
    });
    return content;
}

QTextCharFormat attributesFormat(const TextAttributes& attributes) {
    QTextCharFormat format;
    if (attributes.foregroundColor) {
        format.setProperty(colorProperty, true);
    }
    if (attributes.font) {
        format.setFontFamilies({QFontDatabase::systemFont(QFontDatabase::GeneralFont).family()});
        format.setProperty(fontSizeProperty, attributes.font->pointSize);
        // Any size can be stored, but only a positive one drawn.
        if (attributes.font->pointSize > 0) {
            format.setFontPointSize(attributes.font->pointSize);
        }
    }
    return format;
}

bool isToken(const QTextCharFormat& format) {
    return format.hasProperty(tokenValueProperty);
}

QTextCharFormat ordinaryFormat(QTextCharFormat format) {
    format.clearProperty(tokenValueProperty);
    format.clearProperty(tokenWidthProperty);
    format.clearProperty(seamProperty);
    return format;
}

bool continuesLine(const QTextBlock& block) {
    return block.position() > 0 && isSeam(block.charFormat());
}

} // namespace tolvane::platform
