#pragma once

#include "decoder/Answer.h"

#include <QIODevice>

namespace tolvane::decoder {

/// Writes a raster picture, or all frames of an animation that fit the limits. The contents decide the
/// format, not the file's name. False, with nothing written, if it is not such a picture.
[[nodiscard]] bool showRasterPicture(QIODevice& file, const Request& request, Answer& answer);

} // namespace tolvane::decoder
