#include "details/Report.h"

#include "platform/values/Utf8.h"

#include <cstddef>
#include <initializer_list>

namespace tolvane::details {

std::string reportText(const ReportFields& fields) {
    const auto text = [&fields](DetailsTexts::Text DetailsTexts::* member) {
        const DetailsTexts::Text& held = fields.texts.*member;
        return held ? std::string_view(*held) : std::string_view();
    };
    using Texts = DetailsTexts;
    const std::string_view bookmark = text(&Texts::bookmarkTextbox);
    const std::string_view attributes = text(&Texts::inodeText);

    std::string report;
    report.reserve(1024 + bookmark.size() + attributes.size());
    const auto append = [&report](std::initializer_list<std::string_view> pieces) {
        for (const std::string_view piece : pieces) {
            report += piece;
        }
    };

    append({"Details for file ", fields.windowTitle, "\n"});
    append({"Path: ", text(&Texts::pathTextbox), "\n"});
    append({"volfs path: ", text(&Texts::volfsPathTextbox), "\n"});
    append({"FileReferenceURL: ", text(&Texts::frURLTextbox), "\n"});
    append(
        {"Sizes:\n     URL Keys: data ", text(&Texts::urlDataSize), " metadata ", text(&Texts::urlXattrSize),
         " total ", text(&Texts::urlTotalSize), "\n"});
    append(
        {"     File system: data ", text(&Texts::filemanSize), " metadata ", text(&Texts::xattrSize),
         " total ", text(&Texts::filemanTotalSize), "\n"});
    append({"Posix permissions (octal): ", text(&Texts::permsTextbox), "\n"});
    append({"Owner: ", text(&Texts::ownerNameTextbox), " ID ", text(&Texts::ownerIDTextbox), "\n"});
    append({"Group: ", text(&Texts::groupNameTextbox), " ID ", text(&Texts::groupIDTextbox), "\n"});
    append(
        {"Created: ", text(&Texts::createdTextbox), " last modified ", text(&Texts::modifiedTextbox), "\n"});
    append(
        {"Type: ", text(&Texts::typeTextbox), " reference count: ", text(&Texts::refCountTextbox), "\n\n"});
    append({"Bookmark (Base-64):\n", bookmark, "\n\n"});
    append({"Bookmark path: ", text(&Texts::bookmarkPathTextbox), "\n\n"});
    append({"Extended attributes: ", attributes, "\n"});
    if (fields.date) {
        append({"on ", *fields.date});
    }
    return report;
}

std::string reportFileName(std::string_view windowTitle) {
    constexpr std::size_t longestFileName = 255;
    constexpr std::string_view suffix = "-tolvane.text";
    std::string name(windowTitle.empty() ? "Untitled" : windowTitle);
    if (name.size() + suffix.size() > longestFileName) {
        std::size_t end = 0;
        for (std::size_t next = 0; next + suffix.size() <= longestFileName;) {
            end = next;
            next += platform::decodeFirstCharacter(std::string_view(name).substr(next)).length;
        }
        name.resize(end);
    }
    return name.append(suffix);
}

} // namespace tolvane::details
