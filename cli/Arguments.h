#pragma once

#include <cstddef>
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
    /// The words for the extended attributes follow each report; not with `json`.
    bool explain = false;
    /// How many threads may work; nothing where it is not said.
    std::optional<std::size_t> jobs;
};

/// What `tolvane-cli attributes` was asked for; names as of a report.
struct AttributesRequest {
    std::vector<std::string> names;
    std::optional<std::string> files0From;
    bool json = false;
    std::optional<std::size_t> jobs;
    /// The content is read and compared with checksums in attributes.
    bool verify = false;
};

/// What `tolvane-cli attributes --explain` was asked for: a value from elsewhere, given as one of the two.
struct AttributesExplainRequest {
    std::string name;
    std::optional<std::string> hex;
    std::optional<std::string> valueFile;
    bool json = false;
};

/// What `tolvane-cli bookmark make` was asked for.
struct BookmarkMakeRequest {
    std::string file;
    /// The bytes of an alias file, not a line of base-64.
    bool alias = false;
};

/// What `tolvane-cli bookmark read` was asked for.
struct BookmarkReadRequest {
    std::string aliasFile;
    /// The number of a bookmark in any kind of file, as 'bookmark find' prints it.
    std::optional<std::size_t> at;
    /// The folder that gets a file for every bookmark in the file; not with `at`.
    std::optional<std::string> extractFolder;
};

/// Where a bookmark comes from: a text, a file, or standard input where neither is given.
struct BookmarkOrigin {
    std::optional<std::string> text;
    std::optional<std::string> file;
    /// The number of a bookmark in any kind of file, as 'bookmark find' prints it; with `file` alone.
    std::optional<std::size_t> at;
};

/// What `tolvane-cli bookmark show` was asked for.
struct BookmarkShowRequest {
    BookmarkOrigin origin;
    bool json = false;
    /// What is left of a bookmark that cannot be read.
    bool salvage = false;
};

/// What `tolvane-cli bookmark resolve` was asked for.
struct BookmarkResolveRequest {
    BookmarkOrigin origin;
    bool json = false;
    bool verbose = false;
    /// Every bookmark in the file; then nothing but `json` is given besides.
    bool all = false;
};

/// What `tolvane-cli bookmark find` was asked for.
struct BookmarkFindRequest {
    std::vector<std::string> names;
    bool recursive = false;
    /// With folders on other volumes than the one that was named.
    bool allVolumes = false;
    bool json = false;
    std::optional<std::size_t> jobs;
};

/// A text for standard output, after which the program has done what was asked: help or the version.
struct Information {
    std::string text;
};

/// Arguments that make no sense; the message is one sentence without the program's name.
struct UsageError {
    std::string message;
};

using Request = std::variant<
    ReportRequest,
    AttributesRequest,
    AttributesExplainRequest,
    BookmarkMakeRequest,
    BookmarkReadRequest,
    BookmarkShowRequest,
    BookmarkResolveRequest,
    BookmarkFindRequest,
    Information,
    UsageError>;

/// Parses the arguments after the program's name. File names are bytes; any can be given after "--".
Request parseArguments(std::span<const std::string> arguments);

} // namespace tolvane::cli
