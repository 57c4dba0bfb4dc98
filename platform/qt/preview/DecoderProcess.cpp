#include "platform/qt/preview/DecoderProcess.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace tolvane::platform {

namespace {

using namespace Qt::StringLiterals;

QSize allowedSize(QSize size) {
    constexpr auto longest = static_cast<int>(DecoderLimits::longestEdge);
    return size.boundedTo({longest, longest}).expandedTo({1, 1});
}

/// What the decoder needs, and nothing that leads to a display or a session.
QProcessEnvironment decoderEnvironment() {
    const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment environment;
    for (const QString& name : own.keys()) {
        const bool isWanted = name.startsWith(u"LC_") || name.startsWith(u"FONTCONFIG_")
                              || name.endsWith(u"SAN_OPTIONS") || name == u"LANG" || name == u"HOME"
                              || name == u"PATH" || name == u"TMPDIR" || name == u"LD_LIBRARY_PATH"
                              || name == u"QT_PLUGIN_PATH" || name == u"QT_QPA_PLATFORM_PLUGIN_PATH";
        if (isWanted) {
            environment.insert(name, own.value(name));
        }
    }
    return environment;
}

DecodedEnd failed(const QString& sentence) {
    return {DecodedEnd::How::failed, sentence};
}

} // namespace

QString decoderProgramOf(const QString& folder) {
    const QString beside = folder + u"/tolvane-decoder"_s;
    return QFileInfo::exists(beside) ? beside : folder + u"/../libexec/tolvane/tolvane-decoder"_s;
}

QString defaultDecoderProgram() {
    return decoderProgramOf(QCoreApplication::applicationDirPath());
}

class DecoderProcess::Run {
public:
    Run(const DecoderSettings& settings, const DecoderRequest& request, Listener listener)
        : listener_(std::move(listener))
        , reader_(allowedSize(request.maximumSize))
        , process_(std::make_unique<QProcess>()) {
        const QSize size = allowedSize(request.maximumSize);
        process_->setProgram(settings.program);
        process_->setArguments(
            {QString::fromLatin1(request.url.absoluteString()), QString::number(std::max(request.page, 1)),
             QString::number(size.width()), QString::number(size.height())});
        process_->setProcessEnvironment(decoderEnvironment());
        process_->setStandardInputFile(QProcess::nullDevice());
        process_->setStandardErrorFile(QProcess::nullDevice());
        QObject::connect(process_.get(), &QProcess::readyReadStandardOutput, &context_, [this] { read(); });
        QObject::connect(
            process_.get(), &QProcess::errorOccurred, &context_, [this](QProcess::ProcessError error) {
                if (error == QProcess::FailedToStart) {
                    end(failed(
                        u"The decoder cannot be started: %1."_s.arg(process_->errorString().trimmed())));
                }
            });
        QObject::connect(process_.get(), &QProcess::finished, &context_, [this] { finish(); });
        timer_.setSingleShot(true);
        QObject::connect(&timer_, &QTimer::timeout, &context_, [this, limit = settings.timeLimit] {
            const auto seconds = std::chrono::duration<double>(limit).count();
            end(failed(u"Decoding was stopped because it took more than %1 seconds."_s.arg(seconds)));
        });
        timer_.start(settings.timeLimit);
        process_->start();
    }

    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    ~Run() {
        *alive_ = false;
        letGo();
    }

private:
    /// Kills the process without waiting until it has ended: one that hangs in a system call cannot be killed
    /// at once.
    void letGo() {
        timer_.stop();
        if (process_ == nullptr) {
            return;
        }
        QObject::disconnect(process_.get(), nullptr, &context_, nullptr);
        constexpr int patience = 200;
        process_->kill();
        if (process_->state() == QProcess::NotRunning || process_->waitForFinished(patience)) {
            // It may be emitting a signal right now, so it is destroyed later.
            process_.release()->deleteLater();
            return;
        }
        QObject::connect(process_.get(), &QProcess::finished, process_.get(), &QObject::deleteLater);
        static_cast<void>(process_.release());
    }

    void read() {
        const auto alive = alive_;
        while (*alive && process_ != nullptr) {
            const QByteArray bytes = process_->read(mostAtOnce);
            if (bytes.isEmpty()) {
                return;
            }
            reader_.add(bytes);
            while (auto message = reader_.next()) {
                report(*message);
                if (!*alive || process_ == nullptr) {
                    return;
                }
            }
            if (reader_.isBroken()) {
                end(failed(u"The decoder returned an invalid answer."_s));
            }
        }
    }

    void report(const DecoderMessage& message) {
        if (const auto* description = std::get_if<DecodedDescription>(&message)) {
            listener_.described(*description);
        } else if (const auto* frame = std::get_if<DecodedFrame>(&message)) {
            listener_.shown(*frame);
        } else if (const auto* remark = std::get_if<DecodedRemark>(&message)) {
            listener_.remarked(remark->sentence);
        } else if (const auto* last = std::get_if<DecodedEnd>(&message)) {
            end(*last);
        }
    }

    void finish() {
        const auto alive = alive_;
        process_->setReadChannel(QProcess::StandardOutput);
        read();
        if (*alive && process_ != nullptr) {
            end(failed(
                process_->exitStatus() == QProcess::CrashExit
                    ? u"The decoder crashed or exceeded its time or memory limit."_s
                    : u"The decoder returned an incomplete answer."_s));
        }
    }

    void end(const DecodedEnd& how) {
        letGo();
        // The handler may destroy this object, and with it the function.
        const auto ended = std::move(listener_.ended);
        ended(how);
    }

    static constexpr qint64 mostAtOnce = 1'000'000;

    Listener listener_;
    DecoderMessageReader reader_;
    std::unique_ptr<QProcess> process_;
    QTimer timer_;
    QObject context_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

DecoderProcess::DecoderProcess(
    const DecoderSettings& settings, const DecoderRequest& request, Listener listener)
    : run_(std::make_unique<Run>(settings, request, std::move(listener))) {}

DecoderProcess::~DecoderProcess() = default;

} // namespace tolvane::platform
