// Decodes any text, and encodes what came out; encodes any bytes, and decodes them.
#include "fuzz/Fuzz.h"
#include "platform/Base64.h"

#include <algorithm>
#include <string>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const std::string text(data, data + size);
    if (const auto bytes = platform::base64DecodedData(text)) {
        fuzz::require(platform::base64EncodedString(*bytes) == text, "one text alone stands for some bytes");
    }
    const auto bytes = fuzz::bytesOf(data, size);
    const auto decoded = platform::base64DecodedData(platform::base64EncodedString(bytes));
    fuzz::require(decoded && std::ranges::equal(*decoded, bytes), "decoding gives what was encoded");
    return 0;
}
