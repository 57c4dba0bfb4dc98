#include "tests/architecture/IncludeRules.h"

#include "tests/architecture/Directives.h"
#include "tests/architecture/KnownHeaders.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

namespace tolvane::architecture {
namespace {

// What may stand in angle brackets besides the standard library.
enum class Library { posix, icu, qt, poppler, plist, fontconfig, cli11, json };

// What one folder, or one file, may include besides its own folder and the standard library.
struct Rule {
    std::string_view place;
    std::vector<std::string_view> folders;
    std::vector<Library> libraries;
    bool everything = false;
    std::vector<std::string_view> foldersRefused = {};
    std::vector<Library> librariesRefused = {};
};

// "platform" stands for the headers directly in platform/: a folder's name never covers those beneath it.
const std::vector<Rule>& folderRules() {
    using enum Library;
    static const std::vector<Rule> rules{
        {"app", {"platform", "inspect"}, {}},
        {"app/product", {"app"}, {}},
        {"bench", {}, {}, true},
        {"bench/desktop", {}, {}, true},
        {"bench/floor", {}, {}, true},
        {"bench/growth", {}, {}, true},
        {"decoder", {"platform/qt/preview"}, {posix, qt, poppler}},
        {"cli", {"inspect", "details", "resolver", "platform", "platform/bookmark"}, {cli11, json}},
        {"details", {"platform", "inspect"}, {}},
        {"fuzz", {}, {}, true},
        {"inspect", {"platform"}, {}},
        {"platform", {}, {}},
        {"platform/bookmark", {"platform"}, {}},
        {"platform/freedesktop", {"platform"}, {qt, fontconfig}},
        {"platform/linux", {"platform", "platform/bookmark"}, {posix, icu}},
        {"platform/memory", {"platform"}, {}},
        {"platform/qt", {"platform", "platform/qt/text"}, {qt}},
        {"platform/qt/network", {"platform", "platform/qt"}, {qt, plist}},
        {"platform/qt/panels", {"platform", "platform/qt", "platform/qt/text"}, {qt}},
        {"platform/qt/preview", {"platform", "platform/qt", "platform/qt/text"}, {qt}},
        {"platform/qt/text", {"platform"}, {qt}},
        {"resolver", {"platform"}, {}},
    };
    return rules;
}

// A program's main.cpp is where its parts are put together, and so may know them all.
const std::vector<Rule>& fileRules() {
    static const std::vector<Rule> rules{
        {"app/main.cpp", {}, {}, true},
        {"cli/main.cpp",
         {},
         {},
         true,
         {"platform/qt", "platform/qt/network", "platform/qt/panels", "platform/qt/preview",
          "platform/qt/text", "platform/freedesktop"},
         {Library::qt}},
    };
    return rules;
}

// Within these, sources in folders of any depth may include everything.
const Rule& freeTreeRule() {
    static const Rule rule{"", {}, {}, true};
    return rule;
}

std::string_view folderOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

bool contains(const auto& range, const auto& value) {
    return std::ranges::find(range, value) != std::ranges::end(range);
}

const Rule* ruleFor(std::string_view file) {
    const std::string_view folder = folderOf(file);
    if (const auto rule = std::ranges::find(fileRules(), file, &Rule::place); rule != fileRules().end()) {
        return &*rule;
    }
    if (const auto rule = std::ranges::find(folderRules(), folder, &Rule::place);
        rule != folderRules().end()) {
        return &*rule;
    }
    return file.starts_with("tests/") ? &freeTreeRule() : nullptr;
}

std::optional<Library> libraryOf(std::string_view header) {
    if (header.starts_with("unicode/")) {
        return Library::icu;
    }
    if (header.starts_with("CLI/")) {
        return Library::cli11;
    }
    if (header.starts_with("nlohmann/")) {
        return Library::json;
    }
    if (header.starts_with("plist/")) {
        return Library::plist;
    }
    if (header.starts_with("fontconfig/")) {
        return Library::fontconfig;
    }
    if (header.starts_with("poppler-qt6")) {
        return Library::poppler;
    }
    if (header.starts_with('Q')) {
        return Library::qt;
    }
    if (isSystemHeader(header)) {
        return Library::posix;
    }
    return std::nullopt;
}

// The reason why a header in quotation marks may not be included, if there is one.
std::optional<std::string> refusalOfOwn(const Rule& rule, std::string_view file, std::string_view header) {
    if (header.find('/') == std::string_view::npos || header.starts_with('.') || header.contains("/../")) {
        return "the header is not named from the repository's root";
    }
    const std::string_view folder = folderOf(header);
    const bool allowed = rule.everything ? !contains(rule.foldersRefused, folder)
                                         : folder == folderOf(file) || contains(rule.folders, folder);
    if (allowed) {
        return std::nullopt;
    }
    return std::string(folderOf(file)) + "/ may not include from " + std::string(folder) + "/";
}

// The reason why a header in angle brackets may not be included, if there is one.
std::optional<std::string> refusalOfForeign(
    const Rule& rule, std::string_view file, std::string_view header) {
    if (isStandardHeader(header)) {
        return std::nullopt;
    }
    const std::optional<Library> library = libraryOf(header);
    const bool allowed = rule.everything ? !library || !contains(rule.librariesRefused, *library)
                                         : library && contains(rule.libraries, *library);
    if (allowed) {
        return std::nullopt;
    }
    return "the header is not of the standard library, nor granted to " + std::string(folderOf(file)) + "/";
}

std::optional<std::string> refusalOfInclude(const Rule& rule, std::string_view file, std::string_view rest) {
    const char close = rest.starts_with('<') ? '>' : '"';
    const std::size_t end =
        rest.starts_with('<') || rest.starts_with('"') ? rest.find(close, 1) : std::string_view::npos;
    if (end == std::string_view::npos) {
        return "the header is not named outright";
    }
    const std::string_view header = rest.substr(1, end - 1);
    return close == '>' ? refusalOfForeign(rule, file, header) : refusalOfOwn(rule, file, header);
}

bool isCondition(std::string_view directive) {
    constexpr std::array conditions{"if", "ifdef", "ifndef", "elif", "elifdef", "elifndef"};
    return contains(conditions, directive);
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const Violation& violation) {
    return stream << violation.file << ':' << violation.line << ": " << violation.text << ": "
                  << violation.reason;
}

std::vector<Violation> violationsIn(std::string_view file, std::string_view text) {
    const Rule* const rule = ruleFor(file);
    if (rule == nullptr) {
        return {{std::string(file), 1, std::string(folderOf(file)) + "/", "no rule knows this folder"}};
    }
    std::vector<Violation> violations;
    const auto report = [&](const Directive& directive, const std::string& reason) {
        violations.push_back(
            {std::string(file), directive.line, "#" + directive.name + " " + directive.rest, reason});
    };
    for (const Directive& directive : directivesOf(text)) {
        if (directive.name == "include" || directive.name == "include_next") {
            if (const auto reason = refusalOfInclude(*rule, file, directive.rest)) {
                report(directive, *reason);
            }
        } else if (
            isCondition(directive.name) && !file.starts_with("platform/")
            && std::ranges::any_of(identifiersOf(directive.rest), isPlatformMacro)) {
            report(directive, "platforms are told apart in platform/ alone");
        }
    }
    return violations;
}

} // namespace tolvane::architecture
