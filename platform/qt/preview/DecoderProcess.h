#pragma once

#include "platform/qt/preview/DecoderMessages.h"
#include "platform/values/URL.h"

#include <QSize>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace tolvane::platform {

/// The decoder of a program that lies in the folder: beside it, as built, or else in "../libexec/tolvane"
/// from there, as installed.
QString decoderProgramOf(const QString& folder);

/// The decoder of the program that runs.
QString defaultDecoderProgram();

struct DecoderSettings {
    QString program = defaultDecoderProgram();
    /// For the whole answer, by the clock.
    std::chrono::milliseconds timeLimit = std::chrono::seconds(10);
};

/// What is asked of the decoder.
struct DecoderRequest {
    URL url;
    int page = 1;      ///< Of a PDF document, from 1 on.
    QSize maximumSize; ///< Of a frame in pixels; cut to what the decoder takes.
};

/// One run of the decoder program: it reads a file that nobody trusts, and whatever happens to it then costs
/// this program an answer and no more. Ends the run when it goes. Main thread only.
class DecoderProcess {
public:
    /// Told on the main thread as the answer comes. Each may destroy the process.
    struct Listener {
        std::function<void(const DecodedDescription&)> described;
        std::function<void(const DecodedFrame&)> shown;
        std::function<void(const QString& sentence)> remarked;
        /// The last word, once, with a sentence where it failed: because the file is damaged, because the
        /// program could not be started, crashed, took too long, or answered what is no answer.
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
