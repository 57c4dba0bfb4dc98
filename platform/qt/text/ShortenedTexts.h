#pragma once

#include <QFontMetrics>
#include <QString>

#include <functional>
#include <vector>

namespace tolvane::platform {

/// Shortens texts so that no two that differ become the same, each by `shorten`, which leaves out what is
/// in the middle. Where that alone would make some the same, these are shown by their ends and by the places
/// where they differ, with "…" for the rest.
std::vector<QString> shortenedApart(
    const std::vector<QString>& texts, const std::function<QString(const QString&)>& shorten);

/// The same for what a menu lists: no wider than is good for a menu, in characters of common width.
std::vector<QString> shortenedForMenu(const std::vector<QString>& texts, const QFontMetrics& font);

} // namespace tolvane::platform
