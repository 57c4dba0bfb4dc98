#pragma once

#include "platform/values/Date.h"

namespace tolvane::platform {

/// True if a local time without a zone, given as if it were UTC, is this moment in some zone: to the second
/// but for whole quarters of an hour, from 12 hours behind UTC to 14 ahead.
bool isLocalTimeOf(const Date& local, const Date& moment);

} // namespace tolvane::platform
