// Cleans any text and decodes it, and encodes what came out; encodes any bytes, wraps the text, and decodes
// it.
#include "fuzz/Fuzz.h"
#include "platform/values/Base64.h"
#include "resolver/AnalyseBookmark.h"

#include <algorithm>
#include <string>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const std::string text = resolver::cleanedBookmarkText({data, data + size});
    fuzz::require(text.find_first_of(" \n\t") == std::string::npos, "nothing is left to clean");
    fuzz::require(resolver::cleanedBookmarkText(text) == text, "cleaning twice changes nothing more");
    if (const auto bytes = platform::base64DecodedData(text)) {
        fuzz::require(platform::base64EncodedString(*bytes) == text, "one text alone stands for some bytes");
    }
    const auto bytes = fuzz::bytesOf(data, size);
    std::string wrapped = platform::base64EncodedString(bytes);
    for (std::size_t end = size % 80; end < wrapped.size(); end += 80) {
        wrapped.insert(end, size % 2 == 0 ? "\n" : "\t ");
    }
    const auto decoded = platform::base64DecodedData(resolver::cleanedBookmarkText(wrapped));
    fuzz::require(decoded && std::ranges::equal(*decoded, bytes), "decoding gives what was encoded");
    return 0;
}
