// The application's entry in the menus of file managers, as it travels over the bus: an action whose
// parameter is an array of file names.
//
// The bus carries text, and names are bytes. So a name travels either as its path, or as the file URL of that
// path, which is text whatever the name.
#pragma once

#include "platform/Application.h"
#include "platform/URL.h"
#include "platform/freedesktop/RequestedAction.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {

inline constexpr std::string_view fileNamesActionName = "show-file-names";

/// The action for these files. The text of a URL that was made of a path is ASCII.
RequestedAction fileNamesAction(const std::vector<URL>& urls);

/// What an action's parameter holds for the provider of services.
class FileNamesPasteboard final : public ServicesPasteboard {
public:
    /// Without texts it holds no list of file names.
    explicit FileNamesPasteboard(std::optional<std::vector<std::string>> texts) : texts_(std::move(texts)) {}

    /// The path of each URL of a file on this machine, with U+FFFD for what is no text; every other text as
    /// it came.
    std::optional<std::vector<std::string>> fileNames() const override;

private:
    std::optional<std::vector<std::string>> texts_;
};

} // namespace tolvane::platform
