// The part of Quartz that platform/macos/ uses, declared for the checks on Linux; see CoreFoundation.h beside it.
#pragma once

#include <AppKit/AppKit.h>

@class QLPreviewPanel;

@protocol QLPreviewItem
@end

@interface NSURL (PreviewItem) <QLPreviewItem>
@end

@protocol QLPreviewPanelDataSource
- (NSInteger)numberOfPreviewItemsInPreviewPanel:(QLPreviewPanel*)panel;
- (id<QLPreviewItem>)previewPanel:(QLPreviewPanel*)panel previewItemAtIndex:(NSInteger)index;
@end

@protocol QLPreviewPanelDelegate
@end

@interface QLPreviewPanel : NSWindow
+ (QLPreviewPanel*)sharedPreviewPanel;
+ (BOOL)sharedPreviewPanelExists;
- (id<QLPreviewPanelDataSource>)dataSource;
- (void)setDataSource:(id<QLPreviewPanelDataSource>)newValue;
- (id<QLPreviewPanelDelegate>)delegate;
- (void)setDelegate:(id<QLPreviewPanelDelegate>)newValue;
@end
