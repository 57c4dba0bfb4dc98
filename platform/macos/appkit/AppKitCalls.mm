#include "platform/macos/appkit/AppKitCalls.h"

#import <AppKit/AppKit.h>
#import <Quartz/Quartz.h>

#include <utility>

using tolvane::platform::macos::FileNamesHandler;
using tolvane::platform::macos::PreviewItems;

@interface TolvanePreviewSource : NSObject <QLPreviewPanelDataSource, QLPreviewPanelDelegate>
- (instancetype)initWithItems:(PreviewItems)items;
@end

@implementation TolvanePreviewSource {
    PreviewItems items_;
}

- (instancetype)initWithItems:(PreviewItems)items {
    self = [super init];
    if (self != nil) {
        items_ = std::move(items);
    }
    return self;
}

- (NSInteger)numberOfPreviewItemsInPreviewPanel:(QLPreviewPanel*)panel {
    static_cast<void>(panel);
    return static_cast<NSInteger>(items_.count());
}

- (id<QLPreviewItem>)previewPanel:(QLPreviewPanel*)panel previewItemAtIndex:(NSInteger)index {
    static_cast<void>(panel);
    return (__bridge_transfer NSURL*)items_.copyURL(static_cast<std::size_t>(index));
}

@end

@interface TolvaneServicesProvider : NSObject
- (instancetype)initWithHandler:(FileNamesHandler)handler;
- (void)handleServicesWithPboard:(NSPasteboard*)pasteboard
                        userData:(NSString*)userData
                           error:(NSString* __autoreleasing*)error;
@end

@implementation TolvaneServicesProvider {
    FileNamesHandler handler_;
}

- (instancetype)initWithHandler:(FileNamesHandler)handler {
    self = [super init];
    if (self != nil) {
        handler_ = std::move(handler);
    }
    return self;
}

- (void)handleServicesWithPboard:(NSPasteboard*)pasteboard
                        userData:(NSString*)userData
                           error:(NSString* __autoreleasing*)error {
    static_cast<void>(userData);
    static_cast<void>(error);
    NSString* const type = NSCreateFilenamePboardType(@"*");
    const id names = type == nil ? nil : [pasteboard propertyListForType:type];
    handler_((__bridge CFStringRef)type, (__bridge CFTypeRef)names);
}

@end

namespace tolvane::platform::macos {

CFTypeRef createScript(CFStringRef source) {
    return (__bridge_retained CFTypeRef)[[NSAppleScript alloc] initWithSource:(__bridge NSString*)source];
}

bool executeScript(CFTypeRef script) {
    return [(__bridge NSAppleScript*)script executeAndReturnError:nil] != nil;
}

CFTypeRef createPreviewSource(PreviewItems items) {
    return (__bridge_retained CFTypeRef)[[TolvanePreviewSource alloc] initWithItems:std::move(items)];
}

bool hasSharedPreviewPanel() {
    return [QLPreviewPanel sharedPreviewPanel] != nil;
}

void setPreviewPanelDelegate(CFTypeRef source) {
    [[QLPreviewPanel sharedPreviewPanel] setDelegate:(__bridge TolvanePreviewSource*)source];
}

void setPreviewPanelDataSource(CFTypeRef source) {
    [[QLPreviewPanel sharedPreviewPanel] setDataSource:(__bridge TolvanePreviewSource*)source];
}

void makePreviewPanelKeyAndOrderFront() {
    [[QLPreviewPanel sharedPreviewPanel] makeKeyAndOrderFront:nil];
}

void removeFromPreviewPanel(CFTypeRef source) {
    if (![QLPreviewPanel sharedPreviewPanelExists]) {
        return;
    }
    QLPreviewPanel* const panel = [QLPreviewPanel sharedPreviewPanel];
    TolvanePreviewSource* const object = (__bridge TolvanePreviewSource*)source;
    if ([panel dataSource] == object) {
        [panel setDataSource:nil];
    }
    if ([panel delegate] == object) {
        [panel setDelegate:nil];
    }
}

CFTypeRef createServicesProvider(FileNamesHandler handler) {
    return (__bridge_retained CFTypeRef)[[TolvaneServicesProvider alloc] initWithHandler:std::move(handler)];
}

void setServicesProvider(CFTypeRef provider) {
    [[NSApplication sharedApplication] setServicesProvider:(__bridge id)provider];
}

} // namespace tolvane::platform::macos
