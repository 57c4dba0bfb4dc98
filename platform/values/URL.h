#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {

class Dictionary;
class Value;

/// An absolute URL, stored as text; for files that is "file://" and the percent-encoded path.
///
/// File names on Linux are bytes. A URL made from a path keeps every byte, so a name that is not UTF-8
/// reaches the system calls unchanged; only code that shows it converts it to text (`shownText`).
///
/// Like the platform's URL objects, a URL caches resource values of its item, and copies made later share
/// them. So a document's file keeps its identity even when it has vanished or another item has taken its
/// path. A URL and its copies belong to one thread.
class URL {
public:
    /// Parses an absolute URL. Nothing if there is no scheme, nothing after the scheme, or a percent sign
    /// without two hexadecimal digits.
    static std::optional<URL> fromText(std::string_view text);

    /// From the bytes of an absolute path (a relative one is a fatal error; see `absolutePath`). Nothing is
    /// normalised: dots, repeated slashes and a final slash stay.
    static URL fileURLWithPath(std::string_view path);

    const std::string& absoluteString() const { return text_; }
    bool isFileURL() const;

    /// The decoded path: the bytes on disk, which need not be UTF-8. Empty if the URL has no path.
    std::string path() const;

    /// The bytes for system calls, without the terminating NUL; nothing unless this is a file URL with a path
    /// free of NULs.
    std::optional<std::string> fileSystemRepresentation() const;

    /// The last component of the path as bytes, without final slashes; "/" for the root.
    std::string lastPathComponent() const;

    /// Stores a resource value (keys of URLResources.h), or several.
    void keepResourceValue(std::string_view key, Value value);
    void keepResourceValues(Dictionary values);

    /// The stored value, or null. Valid until another is stored.
    const Value* keptResourceValue(std::string_view key) const;

    /// The same URL without stored values, so that its item is looked at anew.
    URL withoutKeptValues() const { return URL(text_); }

    /// URLs are equal if their texts are.
    friend bool operator==(const URL& a, const URL& b) { return a.text_ == b.text_; }

private:
    explicit URL(std::string text) : text_(std::move(text)) {}

    std::string text_;
    std::shared_ptr<Dictionary> kept_; ///< Shared with copies, and changed only while it is not.
};

/// The local file that the text of a file URL names. The URL is made anew from the path, so that one path has
/// one URL however the text was escaped. Nothing unless the text is a file URL without a host or with
/// "localhost", and has an absolute path that a file can have.
std::optional<URL> localFileURL(std::string_view text);

/// The absolute path of a name in a folder: the name itself if it starts with "/", otherwise both joined.
/// Repeated slashes and "." components are removed, which never changes the item; ".." stays, because after a
/// symbolic link removing it would. A name that ends in "/" or "/." keeps a final slash. The folder is
/// absolute; an empty name gives an empty path.
std::string absolutePath(std::string_view name, std::string_view folder);

} // namespace tolvane::platform
