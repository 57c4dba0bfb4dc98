#pragma once

#include "decoder/Answer.h"

#include <QIODevice>

namespace tolvane::decoder {

/// Shows a picture made of pixels, or all frames of an animation that fit the limits, in whatever format the
/// contents are, whatever the file is called. False, with nothing shown, when it is no such picture.
[[nodiscard]] bool showRasterPicture(QIODevice& file, const Request& request, Answer& answer);

} // namespace tolvane::decoder
