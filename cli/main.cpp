#include "cli/Program.h"
#include "cli/ResolutionWitness.h"
#include "details/ViewController.h"
#include "inspect/Document.h"
#include "platform/bookmark/StoredProperties.h"
#include "platform/linux/CurrentDirectory.h"
#include "platform/linux/DeclaredTypesText.h"
#include "platform/linux/LinuxBookmarks.h"
#include "platform/linux/LinuxExtendedAttributeCalls.h"
#include "platform/linux/LinuxFileManager.h"
#include "platform/linux/LinuxStreams.h"
#include "platform/linux/LinuxTextFiles.h"
#include "platform/linux/LinuxURLResources.h"
#include "platform/linux/LinuxUserSession.h"
#include "platform/linux/TypeTable.h"
#include "platform/memory/MemoryAppleScript.h"
#include "platform/memory/MemoryDocumentController.h"
#include "platform/memory/MemoryOpenPanel.h"
#include "platform/memory/MemoryPasteboard.h"
#include "platform/memory/MemoryPreviewPanel.h"
#include "platform/memory/MemorySavePanel.h"
#include "platform/memory/MemoryStoryboard.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "resolver/TRViewController.h"

#include <memory>
#include <string>
#include <vector>

/// The terminal program: the facts come from Linux, the windows exist in memory only.
namespace {

using namespace tolvane;

/// The declared types; when they cannot be read it is said once and the program goes on without them.
platform::TypeTable loadTypeTable(platform::OutputStream& errors) {
    auto table = platform::TypeTable::parse(platform::declaredTypesText);
    if (table) {
        return *std::move(table);
    }
    cli::complain(
        errors, "type table, line " + std::to_string(table.error().line) + ": " + table.error().what);
    return platform::TypeTable::withoutDeclarations();
}

int run(const std::vector<std::string>& arguments) {
    platform::makeWriteFailuresErrors();
    platform::FileDescriptorInput standardInput(platform::FileDescriptor::borrowed(0));
    platform::FileDescriptorOutput standardOutput(platform::FileDescriptor::borrowed(1));
    platform::FileDescriptorOutput standardError(platform::FileDescriptor::borrowed(2));

    const platform::TypeTable typeTable = loadTypeTable(standardError);
    const platform::LinuxExtendedAttributeCalls extendedAttributes;
    const platform::LinuxFileManager fileManager(extendedAttributes);
    const platform::LinuxURLResources resources(typeTable);
    const platform::LinuxBookmarks bookmarks;
    const platform::StoredProperties bookmarkProperties;
    const platform::LinuxUserSession session;
    const platform::LinuxTextFiles textFiles;
    platform::MemorySavePanels savePanels;
    platform::MemoryOpenPanels openPanels;
    platform::MemoryAppleScripts appleScripts;
    platform::MemoryPreviewPanels previewPanels;
    platform::MemoryPasteboard pasteboard;
    platform::MemoryUserDefaults defaults;

    const details::DetailsSources detailsSources{resources,  bookmarks,  session, textFiles,
                                                 savePanels, pasteboard, defaults};
    platform::MemoryBundle mainBundle;
    mainBundle.storyboard("Main").addWindowScene(
        "Document Window Controller", [&detailsSources](const platform::Coder& coder) {
            return details::ViewController::initWithCoder(coder, detailsSources);
        });

    const cli::ResolutionWitness witness(bookmarks, fileManager);
    const resolver::ResolverSources resolverSources{witness,      bookmarkProperties, witness, openPanels,
                                                    appleScripts, previewPanels,      defaults};
    mainBundle.storyboard("Main").addWindowScene(
        "Bookmark Resolver Window", [&resolverSources](const platform::Coder& coder) {
            return resolver::TRViewController::initWithCoder(coder, resolverSources);
        });

    const inspect::FileSources fileSources{resources, fileManager, extendedAttributes};
    platform::MemoryDocumentController documents(
        resources, [&] { return std::make_shared<inspect::Document>(fileSources, mainBundle); });

    const cli::ExitStatus status = cli::runProgram(
        arguments, {documents, standardInput, standardOutput, standardError, platform::currentDirectory,
                    [](const std::string& path) { return platform::openForReading(path); }, bookmarks,
                    session, mainBundle.storyboard("Main"), witness});
    return static_cast<int>(status);
}

} // namespace

int main(int count, char** arguments) {
    return run({arguments + (count > 0 ? 1 : 0), arguments + count});
}
