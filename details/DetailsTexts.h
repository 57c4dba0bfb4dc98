#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane::details {

/// The texts of a file's details, under the names of the fields that show them and in their order. A pass
/// leaves a text absent where it leaves the field alone.
struct DetailsTexts {
    using Text = std::optional<std::string>;

    Text pathTextbox;
    Text volfsPathTextbox;
    Text frURLTextbox;
    Text urlTotalSize;
    Text urlDataSize;
    Text xattrSize;
    Text filemanSize;
    Text urlXattrSize;
    Text filemanTotalSize;
    Text inodeText;
    Text permsTextbox;
    Text ownerNameTextbox;
    Text ownerIDTextbox;
    Text groupNameTextbox;
    Text groupIDTextbox;
    Text createdTextbox;
    Text modifiedTextbox;
    Text typeTextbox;
    Text refCountTextbox;
    Text bookmarkTextbox;
    Text bookmarkPathTextbox;

    struct Named {
        std::string_view name;
        Text DetailsTexts::* text;
    };
    /// Every text with its name, in the order above.
    static const std::array<Named, 21> all;
};

inline constexpr std::array<DetailsTexts::Named, 21> DetailsTexts::all{{
    {"pathTextbox", &DetailsTexts::pathTextbox},
    {"volfsPathTextbox", &DetailsTexts::volfsPathTextbox},
    {"frURLTextbox", &DetailsTexts::frURLTextbox},
    {"urlTotalSize", &DetailsTexts::urlTotalSize},
    {"urlDataSize", &DetailsTexts::urlDataSize},
    {"xattrSize", &DetailsTexts::xattrSize},
    {"filemanSize", &DetailsTexts::filemanSize},
    {"urlXattrSize", &DetailsTexts::urlXattrSize},
    {"filemanTotalSize", &DetailsTexts::filemanTotalSize},
    {"inodeText", &DetailsTexts::inodeText},
    {"permsTextbox", &DetailsTexts::permsTextbox},
    {"ownerNameTextbox", &DetailsTexts::ownerNameTextbox},
    {"ownerIDTextbox", &DetailsTexts::ownerIDTextbox},
    {"groupNameTextbox", &DetailsTexts::groupNameTextbox},
    {"groupIDTextbox", &DetailsTexts::groupIDTextbox},
    {"createdTextbox", &DetailsTexts::createdTextbox},
    {"modifiedTextbox", &DetailsTexts::modifiedTextbox},
    {"typeTextbox", &DetailsTexts::typeTextbox},
    {"refCountTextbox", &DetailsTexts::refCountTextbox},
    {"bookmarkTextbox", &DetailsTexts::bookmarkTextbox},
    {"bookmarkPathTextbox", &DetailsTexts::bookmarkPathTextbox},
}};

} // namespace tolvane::details
