// The test library includes this header and uses nothing of it.
#pragma once
