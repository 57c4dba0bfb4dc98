#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::platform {

/// Colours by role. The theme defines them, so a theme change reaches text that is already shown.
enum class Color { textColor };

/// Fonts by role, with a size in points.
struct Font {
    enum class Family { system };
    Family family = Family::system;
    double pointSize = 0;

    static Font systemFontOfSize(double pointSize) { return {Family::system, pointSize}; }
    friend bool operator==(const Font&, const Font&) = default;
};

/// The attributes of a run of text. The view decides absent ones.
struct TextAttributes {
    std::optional<Color> foregroundColor;
    std::optional<Font> font;
    friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

/// Text with attributes. The runs cover the text without gaps, neighbours differ, and none is empty; an empty
/// text has no runs.
class AttributedString {
public:
    struct Run {
        std::size_t length = 0; ///< In bytes.
        TextAttributes attributes;
        friend bool operator==(const Run&, const Run&) = default;
    };

    AttributedString() = default;

    /// The same attributes over the whole length.
    AttributedString(std::string text, const TextAttributes& attributes);

    const std::string& string() const { return text_; }
    const std::vector<Run>& runs() const { return runs_; }

    void append(const AttributedString& other);

    friend bool operator==(const AttributedString&, const AttributedString&) = default;

private:
    std::string text_;
    std::vector<Run> runs_;
};

} // namespace tolvane::platform
