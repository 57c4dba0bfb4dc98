#pragma once

#include "platform/qt/preview/DecoderMessages.h"
#include "platform/values/URL.h"

#include <QSize>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace tolvane::platform {

/// The decoder of a program in this folder: beside it, or in "../libexec/tolvane" if installed.
QString decoderProgramOf(const QString& folder);

/// The decoder of the running program.
QString defaultDecoderProgram();

struct DecoderSettings {
    QString program = defaultDecoderProgram();
    /// For the whole answer.
    std::chrono::milliseconds timeLimit = std::chrono::seconds(10);
};

/// What is asked of the decoder.
struct DecoderRequest {
    URL url;
    int page = 1;      ///< Of a PDF document, from 1 on.
    QSize maximumSize; ///< Of a frame in pixels; cut to what the decoder takes.
};

/// One run of the decoder program on an untrusted file. Destroying it ends the run. Main thread only.
class DecoderProcess {
public:
    /// Called on the main thread as the answer arrives. Each may destroy the process.
    struct Listener {
        std::function<void(const DecodedDescription&)> described;
        std::function<void(const DecodedFrame&)> shown;
        std::function<void(const QString& sentence)> remarked;
        /// Called once at the end, with a sentence after a failure: the file is damaged, or the program did
        /// not start, crashed, took too long or returned an invalid answer.
        std::function<void(const DecodedEnd&)> ended;
    };

    DecoderProcess(const DecoderSettings& settings, const DecoderRequest& request, Listener listener);
    DecoderProcess(const DecoderProcess&) = delete;
    DecoderProcess& operator=(const DecoderProcess&) = delete;
    ~DecoderProcess();

private:
    class Run;

    std::unique_ptr<Run> run_;
};

} // namespace tolvane::platform
