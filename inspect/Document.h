#pragma once

#include "inspect/SizeData.h"
#include "platform/model/Document.h"
#include "platform/model/Storyboard.h"

#include <memory>
#include <string_view>
#include <vector>

namespace tolvane::inspect {

/// One opened file: its size records and, in the base class, its window.
///
/// A document is read-only: it never writes the file, has nothing to save and is never autosaved. Reading
/// always succeeds; what could not be measured shows as zeros and missing facts.
class Document final : public platform::Document {
public:
    /// `mainBundle` and the objects behind `sources` outlive the document.
    Document(const FileSources& sources, const platform::Bundle& mainBundle)
        : sources_(sources)
        , mainBundle_(mainBundle) {}

    static constexpr bool autosavesInPlace() { return false; }

    /// Makes the window from the scene "Document Window Controller" (`windowControllerOfScene`).
    void makeWindowControllers() override;

    /// Adds a record of the file to `theSizes`. Always true; ignores type and error.
    bool readFromURL(const platform::URL& url, std::string_view typeName, platform::Error* error) override;

    /// One record per read, in order; records are never removed. The first one is shown.
    const std::vector<std::shared_ptr<const SizeData>>& theSizes() const { return theSizes_; }

private:
    FileSources sources_;
    const platform::Bundle& mainBundle_;
    std::vector<std::shared_ptr<const SizeData>> theSizes_;
};

} // namespace tolvane::inspect
