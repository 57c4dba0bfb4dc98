// The part of Foundation that platform/macos/ uses, declared for the checks on Linux; see CoreFoundation.h beside it.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#define nil nullptr

typedef long NSInteger;
typedef bool BOOL;

typedef struct {
    NSInteger majorVersion;
    NSInteger minorVersion;
    NSInteger patchVersion;
} NSOperatingSystemVersion;

__attribute__((objc_root_class)) @interface NSObject
+ (instancetype)alloc;
- (instancetype)init;
@end

@interface NSString : NSObject
@end

@interface NSDictionary : NSObject
@end

@interface NSError : NSObject
@end

@interface NSURL : NSObject
@end

@interface NSAppleEventDescriptor : NSObject
@end

@interface NSAppleScript : NSObject
- (instancetype)initWithSource:(NSString*)source;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary**)errorInfo;
@end

@interface NSFileManager : NSObject
+ (NSFileManager*)defaultManager;
- (NSDictionary*)attributesOfItemAtPath:(NSString*)path error:(NSError**)error;
@end

@interface NSProcessInfo : NSObject
+ (NSProcessInfo*)processInfo;
- (NSOperatingSystemVersion)operatingSystemVersion;
@end

extern "C" NSString* NSHomeDirectory(void);
