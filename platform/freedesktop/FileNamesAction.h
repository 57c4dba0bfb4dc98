/// The entry in the menus of file managers as sent over the bus: an action with an array of file names.
///
/// The bus carries text, and names are bytes. A name is therefore sent as its path, or as the file URL of
/// that path, which is always text.
#pragma once

#include "platform/freedesktop/RequestedAction.h"
#include "platform/services/Application.h"
#include "platform/values/URL.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {

inline constexpr std::string_view fileNamesActionName = "show-file-names";

/// The action for these files. A URL made from a path is ASCII.
RequestedAction fileNamesAction(const std::vector<URL>& urls);

/// The contents of an action's parameter, for the provider of services.
class FileNamesPasteboard final : public ServicesPasteboard {
public:
    /// Without texts there is no list of file names.
    explicit FileNamesPasteboard(std::optional<std::vector<std::string>> texts) : texts_(std::move(texts)) {}

    /// The path of each URL of a local file, with U+FFFD for invalid UTF-8; other texts unchanged.
    std::optional<std::vector<std::string>> fileNames() const override;

private:
    std::optional<std::vector<std::string>> texts_;
};

} // namespace tolvane::platform
