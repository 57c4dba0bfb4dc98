#pragma once

#include "decoder/Answer.h"

#include <QIODevice>

namespace tolvane::decoder {

/// Shows the page asked for of a PDF document, or its last one where it has fewer. False, with nothing shown,
/// when the file is none.
[[nodiscard]] bool showPdfPage(QIODevice& file, const Request& request, Answer& answer);

} // namespace tolvane::decoder
