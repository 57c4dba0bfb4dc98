#include "decoder/Pictures.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>

namespace tolvane::decoder {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype longestResult = 64'000'000;

/// Decided by the bytes, not the declared type, as the picture's reader does.
bool isPictureOfPixels(const QByteArray& bytes) {
    const std::array<QByteArray, 4> beginnings{
        QByteArrayLiteral("\x89PNG\r\n\x1A\n"), QByteArrayLiteral("\xFF\xD8\xFF"),
        QByteArrayLiteral("GIF87a"), QByteArrayLiteral("GIF89a")};
    return std::ranges::any_of(beginnings, [&](const QByteArray& begin) { return bytes.startsWith(begin); });
}

bool isHarmlessReference(QStringView reference) {
    const QStringView trimmed = reference.trimmed();
    if (trimmed.isEmpty() || trimmed.startsWith(u'#')) {
        return true;
    }
    constexpr QStringView beginning = u"data:image/";
    constexpr QStringView encoding = u";base64,";
    const qsizetype encodingAt = trimmed.indexOf(encoding);
    return trimmed.startsWith(beginning) && encodingAt >= 0
           && isPictureOfPixels(
               QByteArray::fromBase64(trimmed.sliced(encodingAt + encoding.size()).toLatin1()));
}

/// Whether a style refers to anything outside: a URL that does not begin with "#", or another style sheet.
bool isHarmlessStyle(QStringView style) {
    if (style.contains(u"@import", Qt::CaseInsensitive) || style.contains(u'\\')) {
        return false;
    }
    constexpr QStringView opening = u"url(";
    for (qsizetype at = style.indexOf(opening, 0, Qt::CaseInsensitive); at >= 0;
         at = style.indexOf(opening, at + 1, Qt::CaseInsensitive)) {
        QStringView reference = style.sliced(at + opening.size()).trimmed();
        while (reference.startsWith(u'"') || reference.startsWith(u'\'')) {
            reference = reference.sliced(1).trimmed();
        }
        if (!reference.startsWith(u'#')) {
            return false;
        }
    }
    return true;
}

bool isHarmless(const QXmlStreamAttribute& attribute) {
    const QStringView name = attribute.name();
    if (name.compare(u"href", Qt::CaseInsensitive) == 0 || name.compare(u"src", Qt::CaseInsensitive) == 0
        || name.compare(u"base", Qt::CaseInsensitive) == 0) {
        return isHarmlessReference(attribute.value());
    }
    return isHarmlessStyle(attribute.value());
}

void copyStartOfElement(const QXmlStreamReader& reader, QXmlStreamWriter& writer) {
    writer.writeStartElement(reader.qualifiedName().toString());
    for (const QXmlStreamNamespaceDeclaration& declaration : reader.namespaceDeclarations()) {
        const QString prefix = declaration.prefix().toString();
        const QString name = prefix.isEmpty() ? u"xmlns"_s : u"xmlns:"_s + prefix;
        writer.writeAttribute(name, declaration.namespaceUri().toString());
    }
    for (const QXmlStreamAttribute& attribute : reader.attributes()) {
        if (isHarmless(attribute)) {
            writer.writeAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
        }
    }
}

} // namespace

std::optional<QByteArray> selfContainedSvg(const QByteArray& svg) {
    QXmlStreamReader reader(svg);
    QByteArray result;
    QXmlStreamWriter writer(&result);
    bool inStyle = false;
    while (!reader.atEnd() && result.size() <= longestResult) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            inStyle = reader.name().compare(u"style", Qt::CaseInsensitive) == 0;
            copyStartOfElement(reader, writer);
            break;
        case QXmlStreamReader::EndElement:
            inStyle = false;
            writer.writeEndElement();
            break;
        case QXmlStreamReader::Characters:
            if (!inStyle || isHarmlessStyle(reader.text())) {
                writer.writeCharacters(reader.text().toString());
            }
            break;
        default:
            break; // Comments, instructions, the document type and what it declares.
        }
    }
    if (reader.hasError() || result.size() > longestResult) {
        return std::nullopt;
    }
    return result;
}

} // namespace tolvane::decoder
