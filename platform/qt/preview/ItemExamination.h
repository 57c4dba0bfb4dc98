#pragma once

#include "platform/qt/preview/FileText.h"
#include "platform/services/FileContents.h"

#include <QString>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace tolvane::platform {

/// What decides how an item is shown: its kind, target and first bytes. Made on a worker thread.
struct ItemExamination {
    std::string path;
    FileAnswer<ItemLook> item = std::unexpected(std::error_code()); ///< The item itself.
    std::optional<std::string> destination;                         ///< Of a symbolic link.
    FileAnswer<ItemLook> target =
        std::unexpected(std::error_code()); ///< What it leads to; itself if no link.
    std::shared_ptr<const OpenedFile> file; ///< Where the target is a regular file,
    std::error_code openFailure;            ///< or why it cannot be read.
    std::vector<std::byte> front;           ///< Its first bytes.

    bool isLink() const { return item && item->kind == ItemKind::symbolicLink; }
    bool isFolder() const { return target && target->kind == ItemKind::folder; }

    /// Whether the other leads to the same contents, as far as known without reading them.
    bool showsTheSameAs(const ItemExamination& other) const;
};

/// How many bytes of a file's front are looked at.
inline constexpr std::size_t examinedFrontLength = 4096;

ItemExamination examineItem(const FileContents& files, const std::string& path);

/// How an item's contents are to be shown.
enum class Presentation {
    text,           ///< As text.
    textUnlessMore, ///< By the decoder if it knows it, else as text.
    decoded,        ///< By the decoder if it knows it, else by facts.
    folder,         ///< By facts, and what is in it.
    facts,          ///< By facts alone.
};

Presentation presentationOf(const ItemExamination& item);

struct Fact {
    QString label;
    QString value;
    friend bool operator==(const Fact&, const Fact&) = default;
};

/// The main facts, one for each line.
std::vector<Fact> factsOf(const ItemExamination& item);

/// Why only facts are shown; empty if nothing prevents showing the contents.
QString obstacleOf(const ItemExamination& item);

/// "FIFO" and so on, as a noun that can stand alone.
QString kindName(ItemKind kind);

/// "1 byte", "2,345,678 bytes (2.35 MB)".
QString sizeText(std::uint64_t bytes);

/// "1,234".
QString countText(std::uint64_t count);

} // namespace tolvane::platform
