// The part of AppKit that platform/macos/ uses, declared for the checks on Linux; see CoreFoundation.h beside it.
#pragma once

#include <Foundation/Foundation.h>

@interface NSPasteboard : NSObject
- (id)propertyListForType:(NSString*)dataType;
@end

@interface NSWindow : NSObject
- (void)makeKeyAndOrderFront:(id)sender;
@end

@interface NSApplication : NSObject
+ (NSApplication*)sharedApplication;
- (void)setServicesProvider:(id)newValue;
@end

extern "C" NSString* NSCreateFilenamePboardType(NSString* fileType);
