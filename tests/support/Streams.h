#pragma once

#include "platform/services/Streams.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::tests {

/// Input in pieces of a fixed size, which may fail at its end.
class TextInput final : public platform::InputStream {
public:
    explicit TextInput(std::string text, std::size_t pieceSize = 4'096)
        : text_(std::move(text))
        , pieceSize_(pieceSize) {}

    std::optional<platform::Error> failureAtEnd;
    std::size_t reads = 0;

    platform::Result<std::size_t> read(std::span<char> buffer) override {
        ++reads;
        if (position_ == text_.size() && failureAtEnd) {
            return std::unexpected(*failureAtEnd);
        }
        const std::size_t count = std::min({pieceSize_, buffer.size(), text_.size() - position_});
        std::copy_n(text_.data() + position_, count, buffer.begin());
        position_ += count;
        return count;
    }

private:
    std::string text_;
    std::size_t pieceSize_;
    std::size_t position_ = 0;
};

/// Output that is stored, and fails once it contains `capacity` bytes.
class TextOutput final : public platform::OutputStream {
public:
    std::string text;
    bool terminal = false;
    std::size_t capacity = SIZE_MAX;
    platform::Error failure = platform::posixError(28);
    std::size_t writes = 0;

    platform::Result<void> write(std::string_view bytes) override {
        ++writes;
        if (bytes.size() > capacity - text.size()) {
            return std::unexpected(failure);
        }
        text += bytes;
        return {};
    }
    bool isTerminal() const override { return terminal; }
};

} // namespace tolvane::tests
