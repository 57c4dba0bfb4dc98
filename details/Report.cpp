#include "details/Report.h"

#include <initializer_list>
#include <string_view>

namespace tolvane::details {

std::string reportText(const ReportFields& fields) {
    std::string report;
    report.reserve(1024 + fields.bookmarkTextbox.size() + fields.inodeText.size());
    const auto append = [&report](std::initializer_list<std::string_view> pieces) {
        for (const std::string_view piece : pieces) {
            report += piece;
        }
    };

    append({"Details for file ", fields.windowTitle, "\n"});
    append({"Path: ", fields.pathTextbox, "\n"});
    append({"volfs path: ", fields.volfsPathTextbox, "\n"});
    append({"FileReferenceURL: ", fields.frURLTextbox, "\n"});
    append(
        {"Sizes:\n     URL Keys: data ", fields.urlDataSize, " metadata ", fields.urlXattrSize, " total ",
         fields.urlTotalSize, "\n"});
    append(
        {"     File system: data ", fields.filemanSize, " metadata ", fields.xattrSize, " total ",
         fields.filemanTotalSize, "\n"});
    append({"Posix permissions (octal): ", fields.permsTextbox, "\n"});
    append({"Owner: ", fields.ownerNameTextbox, " ID ", fields.ownerIDTextbox, "\n"});
    append({"Group: ", fields.groupNameTextbox, " ID ", fields.groupIDTextbox, "\n"});
    append({"Created: ", fields.createdTextbox, " last modified ", fields.modifiedTextbox, "\n"});
    append({"Type: ", fields.typeTextbox, " reference count: ", fields.refCountTextbox, "\n\n"});
    append({"Bookmark (Base-64):\n", fields.bookmarkTextbox, "\n\n"});
    append({"Bookmark path: ", fields.bookmarkPathTextbox, "\n\n"});
    append({"Extended attributes: ", fields.inodeText, "\n"});
    if (fields.date) {
        append({"on ", *fields.date});
    }
    return report;
}

} // namespace tolvane::details
