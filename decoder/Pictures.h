#pragma once

#include "decoder/Answer.h"

#include <QByteArray>
#include <QIODevice>

#include <optional>

/// The kinds of files that the decoder knows. Each function writes the answer for one kind. False, with
/// nothing written, if the contents are not of that kind; the file's name does not matter.
namespace tolvane::decoder {

/// The requested page of a PDF document, or its last page if it has fewer.
[[nodiscard]] bool showPdfPage(QIODevice& file, const Request& request, Answer& answer);

/// An SVG picture.
[[nodiscard]] bool showVectorPicture(QIODevice& file, const Request& request, Answer& answer);

/// A raster picture, or all frames of an animation that fit the limits.
[[nodiscard]] bool showRasterPicture(QIODevice& file, const Request& request, Answer& answer);

/// The same SVG without anything that could make its reader open other files: references except those within
/// the text and to embedded raster pictures, processing instructions, and document types. Entities are
/// expanded while they stay small. Nothing if the text is not well-formed XML.
std::optional<QByteArray> selfContainedSvg(const QByteArray& svg);

} // namespace tolvane::decoder
