// Collects bookmarks from any text as an XML document.
#include "containers/XmlWalk.h"
#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    containers::Collector collector;
    containers::collectFromXml(fuzz::textOf(data, size), collector);
    for (const containers::Finding& finding : collector.findings()) {
        fuzz::require(finding.where.starts_with('/'), "what is found is in an element");
        fuzz::require(!finding.bytes.empty() && finding.bytes.size() < size, "digits are longer than bytes");
    }
    return 0;
}
