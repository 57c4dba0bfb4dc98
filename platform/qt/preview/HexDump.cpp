#include "platform/qt/preview/HexDump.h"

#include <algorithm>

namespace tolvane::platform {

namespace {

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

QString hexDump(std::span<const std::byte> bytes) {
    QString text;
    for (std::size_t offset = 0; offset < bytes.size(); offset += bytesOfLine) {
        text += offset == 0 ? QString() : QStringLiteral("\n");
        text += hexLine(bytes.subspan(offset, std::min(bytesOfLine, bytes.size() - offset)), offset);
    }
    return text;
}

} // namespace tolvane::platform
