#pragma once

#include "decoder/Answer.h"

#include <QByteArray>
#include <QIODevice>

#include <optional>

namespace tolvane::decoder {

/// Shows an SVG picture. False, with nothing shown, when the file is none.
[[nodiscard]] bool showVectorPicture(QIODevice& file, const Request& request, Answer& answer);

/// The same SVG text without all that could make its reader open something else: references that are neither
/// to the same text nor to pictures of pixels kept in it, processing instructions, document types. Entities
/// are written out, as far as they stay small. Nothing when the text is no well-formed XML.
std::optional<QByteArray> selfContainedSvg(const QByteArray& svg);

} // namespace tolvane::decoder
