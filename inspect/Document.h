#pragma once

#include "inspect/SizeData.h"
#include "platform/Document.h"
#include "platform/Storyboard.h"

#include <memory>
#include <string_view>
#include <vector>

namespace tolvane::inspect {

/// One opened file: its size records and, by the base class, its window.
///
/// A document only looks. It never writes the file, has no changes to save and is never autosaved. Reading
/// always succeeds: what could not be measured shows as zeros and missing facts.
class Document final : public platform::Document {
public:
    /// `mainBundle` and the objects behind `sources` outlive the document.
    Document(const FileSources& sources, const platform::Bundle& mainBundle)
        : sources_(sources)
        , mainBundle_(mainBundle) {}

    static constexpr bool autosavesInPlace() { return false; }

    /// Makes the window of the storyboard "Main", scene "Document Window Controller". A scene that is missing
    /// or is no window controller is a fatal error.
    void makeWindowControllers() override;

    /// Measures the file and adds the record to `theSizes`. Always true; the type is ignored, the error never
    /// set.
    bool readFromURL(const platform::URL& url, std::string_view typeName, platform::Error* error) override;

    /// One record for each read, in read order. Records are only ever added: what is shown comes from the
    /// first.
    const std::vector<std::shared_ptr<const SizeData>>& theSizes() const { return theSizes_; }

private:
    FileSources sources_;
    const platform::Bundle& mainBundle_;
    std::vector<std::shared_ptr<const SizeData>> theSizes_;
};

} // namespace tolvane::inspect
