// Inflates any bytes as a gzip stream, whole and up to a limit.
#include "containers/Gunzip.h"
#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    constexpr std::size_t most = std::size_t{1} << 16U;
    const auto whole = containers::gunzipped(fuzz::bytesOf(data, size), most);
    fuzz::require(whole.bytes.size() <= most, "no more is inflated than asked for");
    const auto half = containers::gunzipped(fuzz::bytesOf(data, size), whole.bytes.size() / 2);
    fuzz::require(half.bytes.size() == whole.bytes.size() / 2, "the limit alone cuts a stream");
    fuzz::require(
        std::ranges::equal(half.bytes, std::span(whole.bytes).first(half.bytes.size())),
        "a shorter limit inflates the same");
    fuzz::require(whole.bytes.empty() || !half.isWhole, "what was left out is missing");
    return 0;
}
