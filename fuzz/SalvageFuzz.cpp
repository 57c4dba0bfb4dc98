// Salvages what is whole of any bytes.
#include "cli/JsonBookmark.h"
#include "cli/JsonWriter.h"
#include "cli/Output.h"
#include "fuzz/Fuzz.h"
#include "fuzz/WrittenText.h"
#include "platform/bookmark/description/SalvageDescription.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/BookmarkSalvage.h"
#include "platform/values/Utf8.h"

#include <algorithm>

namespace {

using namespace tolvane;

/// Whether pieces and gaps lie one after the other within the section.
void checkPlaces(const platform::SalvagedBookmark& salvaged) {
    std::size_t end = 4;
    platform::visitPieces(salvaged.structure, [&](const auto& piece) {
        fuzz::require(piece.offset >= end, "no byte belongs to two pieces");
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(piece)>, platform::BookmarkTable>) {
            end = piece.offset + piece.length();
        } else {
            end = piece.offset + std::size_t{8} + piece.length;
        }
    });
    fuzz::require(end <= salvaged.structure.section.size(), "pieces lie within the section");
    for (const platform::MissingBytes& missing : salvaged.missing) {
        fuzz::require(missing.length > 0, "what is missing has a length");
        fuzz::require(
            missing.isBeyondEnd == (missing.offset >= salvaged.structure.section.size()),
            "what is not there lies behind what is");
    }
}

void checkText(const platform::SalvagedBookmark& salvaged, std::size_t size) {
    const std::string text = platform::salvageDescription(salvaged);
    fuzz::require(platform::isValidUtf8(text), "a description is UTF-8");
    fuzz::require(text.size() <= 64 * size + (1U << 20U), "a description has its limit");
    std::size_t lines = 1 + salvaged.structure.records.size() + salvaged.missing.size()
                        + (salvaged.structure.tables.empty() ? 1U : 0U);
    for (const platform::BookmarkTable& table : salvaged.structure.tables) {
        lines += 1 + table.items.size();
    }
    fuzz::require(
        static_cast<std::size_t>(std::ranges::count(text, '\n')) == lines, "no value begins a line");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = fuzz::bytesOf(data, size);
    const auto salvaged = platform::salvageBookmark(bytes);
    if (!salvaged) {
        return 0;
    }
    fuzz::require(!platform::readBookmark(bytes), "what can be read is not salvaged");
    checkPlaces(*salvaged);
    checkText(*salvaged, size);
    fuzz::WrittenText written;
    cli::Output output(written);
    cli::JsonWriter json(output, false);
    cli::writeSalvageJson(json, *salvaged);
    json.finish();
    output.flush();
    fuzz::requireJsonLine(written.text(), false);
    return 0;
}
