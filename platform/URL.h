#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {

class Value;

/// An absolute URL, kept as its text; for files the text is "file://" and the percent-encoded path.
///
/// File names on Linux are bytes. A URL made from a path keeps every byte of it, so a name that is not UTF-8
/// travels unchanged to the system calls; only whoever shows it turns it into text (`shownText`).
///
/// Like the platform's URL objects, a URL keeps what it was once told about its item, and so do the copies
/// made of it afterwards. That is how a document's file stays the one it was opened as, even when it has
/// vanished or another item has taken its path. URLs belong to the main thread.
class URL {
public:
    /// From the text of an absolute URL. Nothing when there is no scheme or only a scheme, or when a percent
    /// sign is not followed by two hexadecimal digits.
    static std::optional<URL> fromText(std::string_view text);

    /// From the raw bytes of a path that starts with "/" (anything else is a fatal error; see
    /// `absolutePath`). Nothing is normalised: dots, repeated slashes and a final slash stay.
    static URL fileURLWithPath(std::string_view path);

    const std::string& absoluteString() const { return text_; }
    bool isFileURL() const;

    /// The path with its percent escapes decoded: the bytes as they are on disk, which may be no UTF-8. Empty
    /// when the URL has no path.
    std::string path() const;

    /// The bytes for system calls, to be followed by a terminating NUL; nothing for a URL that is no file
    /// URL, or whose path is empty or holds a NUL.
    std::optional<std::string> fileSystemRepresentation() const;

    /// The last component of the path as bytes, final slashes left out; "/" for the root.
    std::string lastPathComponent() const;

    /// Tells the URL a resource value to keep (keys of URLResources.h).
    void keepResourceValue(std::string_view key, Value value);

    /// The kept value, or null when none was told for this key.
    const Value* keptResourceValue(std::string_view key) const;

    /// URLs are equal when their texts are.
    friend bool operator==(const URL& a, const URL& b) { return a.text_ == b.text_; }

private:
    explicit URL(std::string text) : text_(std::move(text)) {}

    using KeptValues = std::map<std::string, Value, std::less<>>;

    std::string text_;
    std::shared_ptr<KeptValues> kept_;
};

/// The file that the text of a file URL names on this machine. The URL is made anew from the path, so that
/// one path has one URL however the text was escaped. Nothing for text that is no file URL, names another
/// host than "localhost", or has no absolute path that a file can have.
std::optional<URL> localFileURL(std::string_view text);

/// The path that a name means in a folder: the name itself where it starts with "/", otherwise folder and
/// name joined. Repeated slashes and "." components are left out, since that never changes what is named;
/// ".." stays, since after a symbolic link it does. A name that ends in "/" or "/." asks for a folder and
/// keeps a final slash. The folder is absolute; an empty name gives an empty path, because it names nothing.
std::string absolutePath(std::string_view name, std::string_view folder);

} // namespace tolvane::platform
