#pragma once

#include "decoder/Answer.h"

#include <QByteArray>
#include <QIODevice>

#include <optional>

namespace tolvane::decoder {

/// Writes an SVG picture. False, with nothing written, if the file is not one.
[[nodiscard]] bool showVectorPicture(QIODevice& file, const Request& request, Answer& answer);

/// The same SVG without anything that could make its reader open other files: references except those within
/// the text and to embedded raster pictures, processing instructions, and document types. Entities are
/// expanded while they stay small. Nothing if the text is not well-formed XML.
std::optional<QByteArray> selfContainedSvg(const QByteArray& svg);

} // namespace tolvane::decoder
