#pragma once

#define PAGESIZE 16384
