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

    /// Makes the window from the scene "Document Window Controller" of the storyboard "Main". It is a fatal
    /// error if the scene is missing or is not a window controller.
    void makeWindowControllers() override;

    /// Measures the file and adds the record to `theSizes`. Always true; ignores the type and never sets the
    /// error.
    bool readFromURL(const platform::URL& url, std::string_view typeName, platform::Error* error) override;

    /// One record per read, in order; records are never removed. The first one is shown.
    const std::vector<std::shared_ptr<const SizeData>>& theSizes() const { return theSizes_; }

private:
    FileSources sources_;
    const platform::Bundle& mainBundle_;
    std::vector<std::shared_ptr<const SizeData>> theSizes_;
};

} // namespace tolvane::inspect
