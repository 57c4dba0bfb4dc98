// Pictures and documents as bytes: valid ones, and some made to exhaust a decoder.
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QtEndian>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

/// One colour in a format that can be written.
inline std::string pictureBytes(const char* format, QSize size, const QColor& color = Qt::red) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes.toStdString();
}

/// A check sum as PNG wants it.
inline std::uint32_t crc32Of(std::string_view bytes) {
    std::uint32_t sum = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~sum;
}

inline std::string bigEndianNumber(std::uint32_t number) {
    std::array<char, 4> bytes{};
    qToBigEndian(number, bytes.data());
    return {bytes.data(), bytes.size()};
}

inline std::string pngChunk(const std::string& type, const std::string& data) {
    return bigEndianNumber(static_cast<std::uint32_t>(data.size())) + type + data
           + bigEndianNumber(crc32Of(type + data));
}

/// A black PNG picture with one bit for each pixel: very many pixels in very few bytes.
inline std::string hugePng(std::uint32_t edge, std::uint32_t rowsPresent) {
    const QByteArray rows((edge + 7) / 8 * rowsPresent + rowsPresent, '\0');
    const std::string compressed = qCompress(rows, 9).mid(4).toStdString();
    const std::string head =
        bigEndianNumber(edge) + bigEndianNumber(edge) + std::string("\x01\x00\x00\x00\x00", 5);
    return "\x89PNG\r\n\x1A\n" + pngChunk("IHDR", head) + pngChunk("IDAT", compressed) + pngChunk("IEND", "");
}

/// A GIF animation: each frame is filled with one of the colours black, red, green and blue in turn. The
/// size of the screen may be other than that of the frames.
inline std::string gifBytes(QSize screen, QSize frame, int frames, int hundredthsOfDelay) {
    const auto number = [](int value) {
        return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
    };
    std::string bytes =
        "GIF89a" + number(screen.width()) + number(screen.height()) + std::string("\x91\0\0", 3);
    bytes += std::string("\0\0\0\xFF\0\0\0\xFF\0\0\0\xFF", 12);
    for (int index = 0; index < frames; ++index) {
        bytes += std::string("\x21\xF9\x04\x00", 4) + number(hundredthsOfDelay) + std::string("\0\0", 2);
        bytes += std::string("\x2C\0\0\0\0", 5) + number(frame.width()) + number(frame.height())
                 + std::string("\0\x02", 2);
        // Codes of three bits; clearing the table after every pixel keeps them at that.
        std::string data;
        unsigned pending = 0;
        unsigned count = 0;
        const auto put = [&](unsigned code) {
            pending |= code << count;
            for (count += 3; count >= 8; count -= 8, pending >>= 8U) {
                data += static_cast<char>(pending & 0xFFU);
            }
        };
        for (int pixel = 0; pixel < frame.width() * frame.height(); ++pixel) {
            put(4);
            put(static_cast<unsigned>(index % 4));
        }
        put(5);
        data += static_cast<char>(pending & 0xFFU);
        for (std::size_t offset = 0; offset < data.size(); offset += 255) {
            const std::string part = data.substr(offset, 255);
            bytes += static_cast<char>(part.size());
            bytes += part;
        }
        bytes += '\0';
    }
    return bytes + ';';
}

/// A PDF document of pages that are 200 by 100 points large and filled with blue; encrypted so that it takes
/// a password, if asked for.
inline std::string pdfBytes(int pages, bool encrypted = false) {
    std::string bytes = "%PDF-1.4\n";
    std::vector<std::size_t> offsets;
    const auto object = [&](const std::string& body) {
        offsets.push_back(bytes.size());
        bytes += std::to_string(offsets.size()) + " 0 obj\n" + body + "\nendobj\n";
    };
    object("<< /Type /Catalog /Pages 2 0 R >>");
    std::string kids;
    for (int page = 0; page < pages; ++page) {
        kids += std::to_string(4 + page) + " 0 R ";
    }
    object("<< /Type /Pages /Kids [ " + kids + "] /Count " + std::to_string(pages) + " >>");
    const std::string drawing = "0 0 1 rg 0 0 200 100 re f";
    object("<< /Length " + std::to_string(drawing.size()) + " >>\nstream\n" + drawing + "\nendstream");
    for (int page = 0; page < pages; ++page) {
        object("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 100] /Contents 3 0 R >>");
    }
    const std::string secret(64, 'A');
    if (encrypted) {
        object("<< /Filter /Standard /V 1 /R 2 /P -4 /O <" + secret + "> /U <" + secret + "> >>");
    }
    const std::size_t table = bytes.size();
    bytes += "xref\n0 " + std::to_string(offsets.size() + 1) + "\n0000000000 65535 f \n";
    for (const std::size_t offset : offsets) {
        const std::string digits = std::to_string(offset);
        bytes += std::string(10 - digits.size(), '0') + digits + " 00000 n \n";
    }
    bytes += "trailer\n<< /Size " + std::to_string(offsets.size() + 1) + " /Root 1 0 R";
    if (encrypted) {
        bytes += " /Encrypt " + std::to_string(offsets.size()) + " 0 R /ID [<41><41>]";
    }
    return bytes + " >>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
}

inline std::string svgBytes(const std::string& inside) {
    return R"(<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" )"
           R"(width="100" height="50">)"
           + inside + "</svg>";
}

} // namespace tolvane::tests
