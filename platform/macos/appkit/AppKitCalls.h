#pragma once

#include <cstddef>
#include <functional>
#include <CoreFoundation/CoreFoundation.h>

/// What only AppKit and Quick Look answer. For the main thread alone. The references that these functions
/// return are the caller's; those that they are given stay the caller's.
namespace tolvane::platform::macos {

/// A script with this text, not compiled yet; null if there is none.
CFTypeRef createScript(CFStringRef source);

/// Compiles and runs a script; false if either fails.
bool executeScript(CFTypeRef script);

/// What the preview panel asks for.
struct PreviewItems {
    std::function<std::size_t()> count;
    /// The item at this index, which is below the count; the reference is passed on. Null if there is none.
    std::function<CFURLRef(std::size_t index)> copyURL;
};

/// An object that answers the preview panel as its data source and as its delegate.
CFTypeRef createPreviewSource(PreviewItems items);

/// Makes the panel that the program's windows share unless it exists; false if there is none.
bool hasSharedPreviewPanel();

/// These three need the shared panel, which keeps none of the objects alive. Null stands for no object.
void setPreviewPanelDelegate(CFTypeRef source);
void setPreviewPanelDataSource(CFTypeRef source);
void makePreviewPanelKeyAndOrderFront();

/// Removes the object from the shared panel, if that exists and has it as its data source or delegate.
void removeFromPreviewPanel(CFTypeRef source);

/// Receives what the pasteboard has as file names of any type, and the type: an object of any kind. Each is
/// null if the system has none.
using FileNamesHandler = std::function<void(CFStringRef type, CFTypeRef names)>;

/// An object that serves the Services entry of the bundle's Info.plist.
CFTypeRef createServicesProvider(FileNamesHandler handler);

/// Makes the object the application's provider, which is kept alive; null removes it.
void setServicesProvider(CFTypeRef provider);

} // namespace tolvane::platform::macos
