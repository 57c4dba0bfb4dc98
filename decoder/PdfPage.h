#pragma once

#include "decoder/Answer.h"

#include <QIODevice>

namespace tolvane::decoder {

/// Writes the requested page of a PDF document, or its last page if it has fewer. False, with nothing
/// written, if the file is not a PDF document.
[[nodiscard]] bool showPdfPage(QIODevice& file, const Request& request, Answer& answer);

} // namespace tolvane::decoder
