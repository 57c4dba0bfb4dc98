#include "attributes/Inflate.h"

#include <limits>
#include <zlib.h>

namespace tolvane::attributes {

namespace {

/// Ends the stream in every case.
class Stream {
public:
    Stream() : isReady_(inflateInit(&stream_) == Z_OK) {}
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    ~Stream() {
        if (isReady_) {
            inflateEnd(&stream_);
        }
    }

    bool isReady() const { return isReady_; }
    z_stream& state() { return stream_; }

private:
    z_stream stream_{};
    bool isReady_;
};

} // namespace

std::optional<platform::Data> inflated(std::span<const std::byte> bytes) {
    Stream stream;
    if (!stream.isReady() || bytes.size() > std::numeric_limits<uInt>::max()) {
        return std::nullopt;
    }
    // zlib reads through a pointer that is not const.
    platform::Data input(bytes.begin(), bytes.end());
    z_stream& state = stream.state();
    state.next_in = reinterpret_cast<Bytef*>(input.data());
    state.avail_in = static_cast<uInt>(input.size());
    platform::Data output;
    constexpr std::size_t piece = 65'536;
    int status = Z_OK;
    while (status == Z_OK && output.size() < mostInflated) {
        const std::size_t done = output.size();
        output.resize(done + piece);
        state.next_out = reinterpret_cast<Bytef*>(output.data() + done);
        state.avail_out = static_cast<uInt>(piece);
        status = inflate(&state, Z_NO_FLUSH);
        output.resize(output.size() - state.avail_out);
    }
    return status == Z_STREAM_END && state.avail_in == 0 ? std::optional(std::move(output)) : std::nullopt;
}

} // namespace tolvane::attributes
