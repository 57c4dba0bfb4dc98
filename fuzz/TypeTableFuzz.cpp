// Parses any text as a table of types, and looks up everything it declares and any name.
#include "fuzz/Fuzz.h"
#include "platform/linux/types/LowerCase.h"
#include "platform/linux/types/TypeTable.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace tolvane;

constexpr std::string_view header = "identifier\textensions\tmime-types\tconforms-to\n";
/// Looking up everything takes quadratic time.
constexpr std::size_t mostAsked = 12;

/// The declarations of the table as text.
std::string textOf(const platform::TypeTable& table) {
    std::string text(header);
    for (const platform::TypeDeclaration& line : table.declarations()) {
        text.append(line.identifier).append("\t").append(line.extensions).append("\t");
        text.append(line.mimeTypes).append("\t").append(line.parents).append("\n");
    }
    return text;
}

void checkClosure(const platform::TypeTable& table, const platform::TypeDeclaration& line) {
    const auto closure = table.closure(line.identifier);
    fuzz::require(
        !closure.empty() && platform::equalIgnoringAsciiCase(closure.front(), line.identifier),
        "a closure begins with its type");
    for (auto type = closure.begin();
         type != closure.begin() + std::min<std::ptrdiff_t>(mostAsked, std::ssize(closure)); ++type) {
        const auto isSame = [&](std::string_view other) {
            return platform::equalIgnoringAsciiCase(*type, other);
        };
        fuzz::require(std::count_if(closure.begin(), closure.end(), isSame) == 1, "each type is told once");
        fuzz::require(table.conforms(line.identifier, *type), "a type conforms to its closure");
    }
}

void checkExtensions(const platform::TypeTable& table, const platform::TypeDeclaration& line) {
    auto extensions = platform::splitList(line.extensions);
    extensions.resize(std::min(extensions.size(), mostAsked));
    for (const std::string_view extension : extensions) {
        using enum platform::TypeKind;
        const auto file = table.typeForExtension(extension, data);
        const auto folder = table.typeForExtension(extension, directory);
        const auto lower = platform::lowerCase(extension);
        fuzz::require(lower || (!file && !folder), "no extension that is no text has a type");
        if (lower && platform::equalIgnoringAsciiCase(*lower, extension)) {
            fuzz::require(file || folder, "what is declared is found");
        }
        fuzz::require(!file || !table.conforms(*file, "public.directory"), "a file's type is no folder's");
        fuzz::require(!folder || table.conforms(*folder, "public.directory"), "a folder's type is one");
    }
}

void check(const platform::TypeTable& table, std::string_view text, std::string_view name) {
    fuzz::require(
        textOf(table) == std::string(text) + (text.ends_with('\n') ? "" : "\n"),
        "the declarations are the whole table");
    const auto lines = table.declarations().first(std::min(mostAsked, table.declarations().size()));
    for (const platform::TypeDeclaration& line : lines) {
        const auto declared = table.declaredIdentifier(line.identifier);
        fuzz::require(
            declared && platform::equalIgnoringAsciiCase(*declared, line.identifier),
            "what is declared is declared");
        checkClosure(table, line);
        checkExtensions(table, line);
    }
    fuzz::require(
        table.closure(name).empty() != table.declaredIdentifier(name).has_value(),
        "only what is declared conforms");
}

void read(std::string_view text, std::string_view name) {
    const auto table = platform::TypeTable::parse(text);
    if (table) {
        check(*table, text, name);
        return;
    }
    const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    fuzz::require(table.error().line >= 1 && table.error().line <= lines, "a fault lies within the table");
    fuzz::require(!table.error().what.empty(), "a fault says what is wrong");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest = fuzz::textOf(data, size);
    const std::string text(fuzz::takeUntilNul(rest));
    read(text, rest);
    read(std::string(header) + text, rest);
    const auto nothing = platform::TypeTable::withoutDeclarations();
    fuzz::require(
        nothing.closure(text).empty() && !nothing.typeForExtension(text, platform::TypeKind::data),
        "a table without types knows none");
    return 0;
}
