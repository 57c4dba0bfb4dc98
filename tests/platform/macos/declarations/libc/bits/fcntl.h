// The flags of files on macOS.
#pragma once

#define O_NONBLOCK 0x4
#define O_APPEND 0x8
#define O_SYNC 0x80
#define O_NOFOLLOW 0x100
#define O_CREAT 0x200
#define O_TRUNC 0x400
#define O_EXCL 0x800
#define O_NOCTTY 0x20000
#define O_DIRECTORY 0x100000
#define O_CLOEXEC 0x1000000

#define F_DUPFD 0
#define F_GETFD 1
#define F_SETFD 2
#define F_GETFL 3
#define F_SETFL 4
