#include "decoder/Answer.h"

#include <cerrno>
#include <cstdlib>
#include <unistd.h>

namespace tolvane::decoder {

using platform::DecodedFrame;
using platform::DecoderLimits;

namespace {

void writeOut(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const auto written = write(STDOUT_FILENO, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (written > 0) {
            bytes = bytes.sliced(written);
        } else if (written == 0 || errno != EINTR) {
            // The reader is gone.
            std::_Exit(EXIT_FAILURE);
        }
    }
}

QStringList& collected() {
    static QStringList sentences;
    return sentences;
}

void collect(QtMsgType /*type*/, const QMessageLogContext& context, const QString& text) {
    constexpr qsizetype most = 20;
    const bool isAboutAPicture = QByteArrayView(context.category).startsWith("qt.gui.imageio");
    if (isAboutAPicture && collected().size() < most && !collected().contains(text)) {
        collected().append(text);
    }
}

} // namespace

Answer::Answer() {
    writeOut(QByteArrayView(platform::decoderGreeting));
}

void Answer::give(const platform::DecoderMessage& message) {
    writeOut(platform::encodedMessage(message));
}

bool Answer::showFrame(const QImage& image, std::uint32_t delay) {
    const auto pixels =
        static_cast<std::uint64_t>(image.width()) * static_cast<std::uint64_t>(image.height());
    if (frames_ >= DecoderLimits::mostFrames || pixels > DecoderLimits::mostPixels - pixels_) {
        return false;
    }
    ++frames_;
    pixels_ += pixels;
    give(DecodedFrame{image, delay});
    return true;
}

QSize sizeWithin(QSize size, QSize maximumSize) {
    if (size.width() > maximumSize.width() || size.height() > maximumSize.height()) {
        size.scale(maximumSize, Qt::KeepAspectRatio);
    }
    return size.expandedTo({1, 1});
}

QStringList complaints() {
    return collected();
}

void collectComplaints() {
    qInstallMessageHandler(collect);
}

} // namespace tolvane::decoder
