#include "containers/Gunzip.h"

#include <algorithm>
#include <zlib.h>

namespace tolvane::containers {

namespace {

/// Ends the stream in every case.
class GzipStream {
public:
    GzipStream() : isReady_(inflateInit2(&state_, largestWindow + gzipOnly) == Z_OK) {}
    GzipStream(const GzipStream&) = delete;
    GzipStream& operator=(const GzipStream&) = delete;
    ~GzipStream() {
        if (isReady_) {
            inflateEnd(&state_);
        }
    }

    bool isReady() const { return isReady_; }
    z_stream& state() { return state_; }

private:
    static constexpr int largestWindow = 15;
    static constexpr int gzipOnly = 16;

    z_stream state_{};
    bool isReady_;
};

} // namespace

bool isLikeGzip(std::span<const std::byte> bytes) {
    return bytes.size() > 2 && bytes[0] == std::byte{0x1F} && bytes[1] == std::byte{0x8B}
           && bytes[2] == std::byte{8};
}

Gunzipped gunzipped(std::span<const std::byte> stream, std::size_t most) {
    constexpr std::size_t piece = 65'536;
    GzipStream inflating;
    Gunzipped result;
    if (!inflating.isReady()) {
        return result;
    }
    z_stream& state = inflating.state();
    // zlib reads through a pointer that is not const, so it gets copies.
    platform::Data input;
    int status = Z_OK;
    while (status == Z_OK && result.bytes.size() < most) {
        if (state.avail_in == 0) {
            const auto next = stream.first(std::min(piece, stream.size()));
            stream = stream.subspan(next.size());
            input.assign(next.begin(), next.end());
            state.next_in = reinterpret_cast<Bytef*>(input.data());
            state.avail_in = static_cast<uInt>(input.size());
        }
        const std::size_t done = result.bytes.size();
        const std::size_t room = std::min(piece, most - done);
        result.bytes.resize(done + room);
        state.next_out = reinterpret_cast<Bytef*>(result.bytes.data() + done);
        state.avail_out = static_cast<uInt>(room);
        status = inflate(&state, Z_NO_FLUSH);
        result.bytes.resize(done + room - state.avail_out);
    }
    result.isWhole = status == Z_STREAM_END;
    return result;
}

} // namespace tolvane::containers
