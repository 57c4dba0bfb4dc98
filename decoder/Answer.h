#pragma once

#include "platform/qt/preview/DecoderMessages.h"

#include <QSize>
#include <QString>
#include <QStringList>

/// What the program does with its file and says of it.
namespace tolvane::decoder {

struct Request {
    int page = 1; ///< Of a PDF document, from 1 on.
    QSize maximumSize;
};

/// The answer on standard output, within the limits that both sides keep.
class Answer {
public:
    Answer();

    /// A reader of the answer that has gone ends the program.
    void give(const platform::DecoderMessage& message);
    void fail(const QString& sentence);
    void complete();
    void leaveUnrecognised();

    /// Shows one more frame; false when none can follow it.
    [[nodiscard]] bool showFrame(const QImage& image, std::uint32_t delay = 0);

private:
    std::uint32_t frames_ = 0;
    std::uint64_t pixels_ = 0;
};

/// The largest size of the same shape that is not larger than either; at least one pixel each way.
QSize sizeWithin(QSize size, QSize maximumSize);

/// Keeps what decoders of pictures complain about from now on.
void collectComplaints();

/// What they complained about so far, one sentence each, without repetitions.
QStringList complaints();

} // namespace tolvane::decoder
