// Collects bookmarks from any bytes as a property list.
#include "containers/PropertyListWalk.h"
#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    containers::Collector collector;
    const std::string_view kind =
        containers::collectFromPropertyList(fuzz::bytesOf(data, size), "/list", collector);
    fuzz::require(!kind.empty() || !collector.complaints().empty(), "what cannot be read says why");
    for (const containers::Finding& finding : collector.findings()) {
        fuzz::require(!kind.empty(), "what is found is in a list that can be read");
        fuzz::require(finding.where.starts_with("/list"), "steps begin as asked for");
        for (const std::string& flag : finding.flags) {
            fuzz::require(!flag.empty(), "a flag has words");
        }
    }
    return 0;
}
