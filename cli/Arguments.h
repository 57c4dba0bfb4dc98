#pragma once

#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace tolvane::cli {

/// What `tolvane-cli report` was asked for.
struct ReportRequest {
    /// The names given one by one; raw bytes.
    std::vector<std::string> names;
    /// The file that holds NUL-separated names, "-" for standard input. Then there are no names beside it.
    std::optional<std::string> files0From;
    bool json = false;
};

/// A text for standard output, after which the program has done what was asked: help or the version.
struct Information {
    std::string text;
};

/// Arguments that make no sense; the message is one sentence without the program's name.
struct UsageError {
    std::string message;
};

using Request = std::variant<ReportRequest, Information, UsageError>;

/// Reads the arguments that follow the program's name. File names are bytes: any of them can be given, those
/// that start with a dash after "--".
Request parseArguments(std::span<const std::string> arguments);

} // namespace tolvane::cli
