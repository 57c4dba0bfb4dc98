// Decodes one picture, animation or PDF page for the preview and writes its pixels to standard output.
//
//     tolvane-decoder URL PAGE WIDTH HEIGHT
//
// The file is untrusted, so the program limits its own resources: see OwnLimits.h.
#include "decoder/Answer.h"
#include "decoder/InputFile.h"
#include "decoder/OwnLimits.h"
#include "decoder/Pictures.h"

#include <QGuiApplication>
#include <QThreadPool>

#include <cstdlib>
#include <new>
#include <optional>

namespace {

using tolvane::decoder::Answer;
using tolvane::decoder::Request;

constexpr int urlArgument = 1;
constexpr int pageArgument = 2;
constexpr int widthArgument = 3;
constexpr int heightArgument = 4;
constexpr int argumentCount = 5;

std::optional<int> number(const char* text, int most) {
    bool isNumber = false;
    const int value = QByteArray(text).toInt(&isNumber);
    return isNumber && value >= 1 && value <= most ? std::optional(value) : std::nullopt;
}

std::optional<Request> requestIn(int count, char** arguments) {
    constexpr int lastPage = 1'000'000'000;
    constexpr int longestEdge = tolvane::platform::DecoderLimits::longestEdge;
    if (count != argumentCount) {
        return std::nullopt;
    }
    const auto page = number(arguments[pageArgument], lastPage);
    const auto width = number(arguments[widthArgument], longestEdge);
    const auto height = number(arguments[heightArgument], longestEdge);
    if (!page || !width || !height) {
        return std::nullopt;
    }
    return Request{*page, {*width, *height}};
}

void answerTo(const QByteArray& url, const Request& request, Answer& answer) {
    const auto file = tolvane::decoder::openedFile(url);
    if (!file) {
        answer.fail(file.error());
    } else if (
        !showPdfPage(**file, request, answer) && !showVectorPicture(**file, request, answer)
        && !showRasterPicture(**file, request, answer)) {
        answer.leaveUnrecognised();
    }
}

} // namespace

int main(int count, char** arguments) {
    if (!tolvane::decoder::limitOwnResources()) {
        return EXIT_FAILURE;
    }
    tolvane::decoder::forgetTheSession();
    tolvane::decoder::collectComplaints();
    const auto request = requestIn(count, arguments);
    if (!request) {
        return EXIT_FAILURE;
    }
    Answer answer;
    try {
        // The libraries get no arguments: these are not meant for them.
        int noCount = 1;
        const QGuiApplication application(noCount, arguments);
        // The memory limit counts the stacks of threads.
        QThreadPool::globalInstance()->setMaxThreadCount(1);
        answerTo(arguments[urlArgument], *request, answer);
    } catch (const std::bad_alloc&) {
        answer.fail(QStringLiteral("Decoding exceeds the memory limit."));
    }
    return EXIT_SUCCESS;
}
