// What the test library asks about the kind of system.
#pragma once

#define TARGET_OS_IPHONE 0
