#include "platform/propertylist/PropertyList.h"

#include "platform/propertylist/PropertyListReaders.h"

#include <algorithm>

namespace tolvane::platform {

namespace {

constexpr std::string_view blanks = "\t\n\v\f\r ";

bool isUtf16(std::string_view text) {
    using namespace std::string_view_literals;
    return text.starts_with("\xFE\xFF") || text.starts_with("\xFF\xFE") || text.starts_with("<\0"sv)
           || text.starts_with("\0<"sv);
}

/// Whether a text that begins with "<" is data in the text form. No tag is made of hexadecimal digits alone.
bool isTextData(std::string_view text) {
    const std::size_t end = text.find_first_not_of("0123456789abcdefABCDEF\t\n\v\f\r ", 1);
    return end != std::string_view::npos && text[end] == '>';
}

PropertyListForm formOf(std::string_view text) {
    if (text.starts_with("bplist")) {
        return PropertyListForm::binary;
    }
    if (isUtf16(text)) {
        return PropertyListForm::xml;
    }
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.starts_with('<') && !isTextData(text) ? PropertyListForm::xml : PropertyListForm::text;
}

} // namespace

std::expected<PropertyList, PropertyListFault> readPropertyList(std::span<const std::byte> bytes) {
    if (bytes.size() > mostPropertyListBytes) {
        return std::unexpected(PropertyListFault{mostPropertyListBytes, "the end of the list"});
    }
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const PropertyListForm form = formOf(text);
    auto value = form == PropertyListForm::binary ? readBinaryPropertyList(bytes)
                 : form == PropertyListForm::xml  ? readXMLPropertyList(text)
                                                  : readTextPropertyList(text);
    if (!value) {
        return std::unexpected(std::move(value.error()));
    }
    return PropertyList{form, *std::move(value)};
}

} // namespace tolvane::platform
