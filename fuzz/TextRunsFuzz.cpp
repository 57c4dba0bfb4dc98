// Collects bookmarks from any text.
#include "containers/TextRuns.h"
#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const std::string_view text = fuzz::textOf(data, size);
    containers::Collector collector;
    containers::collectFromText(text, "/text", collector);
    for (const containers::Finding& finding : collector.findings()) {
        fuzz::require(finding.where.starts_with("/text"), "steps begin as asked for");
        fuzz::require(!finding.bytes.empty() && finding.bytes.size() < size, "digits are longer than bytes");
    }
    if (const auto bytes = containers::bytesOfDigits(text)) {
        fuzz::require(bytes->size() <= size, "digits are longer than bytes");
    }
    return 0;
}
