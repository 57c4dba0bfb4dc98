// Writes whatever can be read as a bookmark as JSON.
#include "cli/JsonBookmark.h"
#include "cli/JsonWriter.h"
#include "cli/Output.h"
#include "fuzz/Fuzz.h"
#include "fuzz/WrittenText.h"
#include "platform/bookmark/BookmarkReader.h"

#include <nlohmann/json.hpp>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const auto structure = platform::readBookmark(fuzz::bytesOf(data, size));
    if (!structure) {
        return 0;
    }
    for (const bool ascii : {false, true}) {
        fuzz::WrittenText written;
        cli::Output output(written);
        cli::JsonWriter json(output, ascii);
        cli::writeBookmarkJson(json, *structure);
        json.finish();
        output.flush();
        fuzz::requireJsonLine(written.text(), ascii);
        fuzz::require(written.text().size() <= 256 * size + (16U << 20U), "the text has its limit");
        const auto read = nlohmann::json::parse(written.text(), nullptr, false);
        fuzz::require(read.at("tables").size() == structure->tables.size(), "every table is told");
        fuzz::require(read.at("warnings").size() == structure->warnings.size(), "every warning is told");
        for (std::size_t i = 0; i < structure->tables.size(); ++i) {
            fuzz::require(
                read.at("tables").at(i).at("items").size() == structure->tables[i].items.size(),
                "every item is told");
        }
    }
    return 0;
}
