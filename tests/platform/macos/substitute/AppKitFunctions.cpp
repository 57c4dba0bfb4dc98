// The functions that ask AppKit and Quick Look, answered as the test says.
#include "platform/macos/appkit/AppKitCalls.h"
#include "tests/platform/macos/substitute/Desktop.h"
#include "tests/platform/macos/substitute/Objects.h"

namespace tolvane::tests::macos {

namespace {

DesktopSubstitute*& theDesktop() {
    static DesktopSubstitute* desktop = nullptr;
    return desktop;
}

} // namespace

DesktopSubstitute::DesktopSubstitute() {
    theDesktop() = this;
}

DesktopSubstitute::~DesktopSubstitute() {
    theDesktop() = nullptr;
}

DesktopSubstitute& DesktopSubstitute::current() {
    return *theDesktop();
}

} // namespace tolvane::tests::macos

namespace tolvane::platform::macos {

using tests::macos::DesktopSubstitute;
using tests::macos::Substitute;

namespace {

CFTypeRef newIfNoFailure() {
    return Substitute::current().isToFail() ? nullptr : tests::macos::newOther();
}

} // namespace

CFTypeRef createScript(CFStringRef source) {
    const auto& units = tests::macos::contentOf<std::u16string>(source, tests::macos::Kind::string);
    Substitute::current().calls.push_back("script " + std::string(units.begin(), units.end()));
    return newIfNoFailure();
}

bool executeScript(CFTypeRef script) {
    tests::macos::objectOf(script, tests::macos::Kind::other);
    Substitute::current().calls.emplace_back("execute");
    return !Substitute::current().isToFail();
}

CFTypeRef createPreviewSource(PreviewItems items) {
    DesktopSubstitute::current().items = std::move(items);
    return tests::macos::newOther();
}

bool hasSharedPreviewPanel() {
    return DesktopSubstitute::current().hasPanel;
}

void setPreviewPanelDelegate(CFTypeRef source) {
    Substitute::current().calls.emplace_back("set delegate");
    DesktopSubstitute::current().delegate = source;
}

void setPreviewPanelDataSource(CFTypeRef source) {
    Substitute::current().calls.emplace_back("set data source");
    DesktopSubstitute::current().dataSource = source;
}

void makePreviewPanelKeyAndOrderFront() {
    Substitute::current().calls.emplace_back("make key");
}

void removeFromPreviewPanel(CFTypeRef source) {
    DesktopSubstitute& desktop = DesktopSubstitute::current();
    tests::macos::objectOf(source, tests::macos::Kind::other);
    for (CFTypeRef* const kept : {&desktop.delegate, &desktop.dataSource}) {
        if (*kept == source) {
            *kept = nullptr;
        }
    }
}

CFTypeRef createServicesProvider(FileNamesHandler handler) {
    DesktopSubstitute::current().serve = std::move(handler);
    return tests::macos::newOther();
}

void setServicesProvider(CFTypeRef provider) {
    DesktopSubstitute::current().provider = provider;
}

} // namespace tolvane::platform::macos
