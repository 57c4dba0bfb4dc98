#pragma once

#include "containers/Collector.h"

#include <string_view>

namespace tolvane::containers {

/// Longer texts of elements are left out.
inline constexpr std::size_t longestXmlText = std::size_t{24} << 20U;

/// Collects the bookmarks and alias records that an XML document has as the text of elements, in base-64 or
/// hexadecimal digits with any white space. Steps are "/name[index among the elements of this name]". The
/// neighbour is the attribute "src" of the nearest element around. Document types are not fetched, and
/// declared entities not used. Where a document breaks off, what stands before it is kept, with a complaint.
void collectFromXml(std::string_view text, Collector& collector);

} // namespace tolvane::containers
