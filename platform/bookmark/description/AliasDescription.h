#pragma once

#include "platform/bookmark/format/AliasRecord.h"

#include <string>

namespace tolvane::platform {

/// Appends the lines that describe an alias record, each after a line feed: three about the record, its
/// volume and its item, one for each tag, one for each warning, and then those of the disk image's record.
///
///     Alias record: 270 bytes, version 2, file, applicationInfo=0x0
///     volume:"Disk" created:"1999-01-24 05:20:00 local time" fileSystem:"H+" diskType=0x5 flags=0xd02
///     item:"note.txt" created:"2018-01-28 16:00:00 local time" number:"30" parentNumber:"20"
///     0) tag=0x0 offset=0x96 folderName:"folder"
///
/// Dates of version 2 are those of the clock of the Mac that wrote the record; where a tag has one in UTC it
/// is added. Values cannot end a line.
void appendAliasDescription(std::string& text, const AliasRecord& record);

/// "2018-01-28 16:00:00 local time", the date in UTC, or both; empty without a date.
std::string aliasDateText(const AliasDate& date);

} // namespace tolvane::platform
