// Runs the decoder program and parses its answer.
#pragma once

#include "platform/qt/preview/DecoderMessages.h"
#include "platform/values/URL.h"
#include "tests/support/Process.h"
#include "tests/support/Programs.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::tests {

struct DecoderAnswer {
    std::optional<platform::DecodedDescription> description;
    std::vector<platform::DecodedFrame> frames;
    std::vector<std::string> remarks;
    std::optional<platform::DecodedEnd> end;
    ProcessOutcome outcome;

    std::string failure() const {
        return end && end->how == platform::DecodedEnd::How::failed ? end->sentence.toStdString() : "";
    }
    /// The one frame of a complete answer.
    QImage onlyFrame() const {
        EXPECT_TRUE(isComplete()) << failure();
        EXPECT_EQ(frames.size(), 1U);
        return frames.empty() ? QImage() : frames[0].image;
    }

    bool isComplete() const { return end && end->how == platform::DecodedEnd::How::complete; }
    bool isUnrecognised() const { return end && end->how == platform::DecodedEnd::How::unrecognised; }
};

inline std::vector<std::string> decoderCommand(const std::string& path, QSize size, int page = 1) {
    const std::string program = programPath("tolvane-decoder");
    return {
        program, platform::URL::fileURLWithPath(path).absoluteString(), std::to_string(page),
        std::to_string(size.width()), std::to_string(size.height())};
}

inline DecoderAnswer answerOf(const ProcessSetup& setup, QSize size) {
    DecoderAnswer answer;
    answer.outcome = run(setup);
    platform::DecoderMessageReader reader(size);
    reader.add(QByteArrayView(answer.outcome.out.data(), std::ssize(answer.outcome.out)));
    while (auto message = reader.next()) {
        if (const auto* description = std::get_if<platform::DecodedDescription>(&*message)) {
            answer.description = *description;
        } else if (auto* const frame = std::get_if<platform::DecodedFrame>(&*message)) {
            answer.frames.push_back(std::move(*frame));
        } else if (const auto* remark = std::get_if<platform::DecodedRemark>(&*message)) {
            answer.remarks.push_back(remark->sentence.toStdString());
        } else if (const auto* end = std::get_if<platform::DecodedEnd>(&*message)) {
            answer.end = *end;
        }
    }
    EXPECT_FALSE(reader.isBroken());
    return answer;
}

inline DecoderAnswer decode(const std::string& path, QSize size = {1000, 1000}, int page = 1) {
    ProcessSetup setup;
    setup.command = decoderCommand(path, size, page);
    return answerOf(setup, size);
}

class DecoderTest : public testing::Test {
protected:
    /// The answer about a file of these bytes.
    DecoderAnswer decodeBytes(const std::string& bytes, QSize size = {1000, 1000}, int page = 1) const {
        return decode(folder.file("item", bytes), size, page);
    }

    TemporaryFolder folder;
};

} // namespace tolvane::tests
