#pragma once

#include <QString>

namespace tolvane::platform {

/// The absolute path that the text of a panel's name field means in a folder. A text without a slash is a
/// name and nothing else; one that begins with "~/" starts at the user's home. Otherwise as `absolutePath`
/// has it.
QString pathOfFieldText(const QString& text, const QString& folder);

} // namespace tolvane::platform
