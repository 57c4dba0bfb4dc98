#pragma once

#include <stdint.h>
#include <sys/types.h>

extern "C" {

ssize_t listxattr(const char* path, char* names, size_t size, int options);
ssize_t getxattr(
    const char* path, const char* name, void* value, size_t size, uint32_t position, int options);
int setxattr(
    const char* path, const char* name, const void* value, size_t size, uint32_t position, int options);
}
