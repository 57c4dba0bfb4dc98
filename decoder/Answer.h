#pragma once

#include "platform/qt/preview/DecoderMessages.h"

#include <QSize>
#include <QString>
#include <QStringList>

/// The decoder's result for its file.
namespace tolvane::decoder {

struct Request {
    int page = 1; ///< Of a PDF document, from 1 on.
    QSize maximumSize;
};

/// Writes the answer to standard output, within the limits that both sides enforce.
class Answer {
public:
    Answer();

    /// The program ends if the reader closes the pipe.
    void give(const platform::DecoderMessage& message);
    void fail(const QString& sentence) {
        give(platform::DecodedEnd{platform::DecodedEnd::How::failed, sentence});
    }
    void complete() { give(platform::DecodedEnd{platform::DecodedEnd::How::complete, {}}); }
    void leaveUnrecognised() { give(platform::DecodedEnd{platform::DecodedEnd::How::unrecognised, {}}); }

    /// Writes one more frame; false if no more can follow.
    [[nodiscard]] bool showFrame(const QImage& image, std::uint32_t delay = 0);

private:
    std::uint32_t frames_ = 0;
    std::uint64_t pixels_ = 0;
};

/// The largest size with the same aspect ratio that fits into both; at least one pixel each way.
QSize sizeWithin(QSize size, QSize maximumSize);

/// Starts collecting the warnings of the picture decoders.
void collectComplaints();

/// The warnings so far, one sentence each, without repetitions.
QStringList complaints();

} // namespace tolvane::decoder
