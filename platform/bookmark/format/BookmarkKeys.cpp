#include "platform/bookmark/format/BookmarkKeys.h"

#include <algorithm>
#include <array>

namespace tolvane::platform {

namespace {

struct KeyLabel {
    std::uint32_t key;
    std::string_view label;
};

constexpr std::array labels{
    KeyLabel{bookmark_key::pathComponents, "pathComponents"},
    KeyLabel{bookmark_key::fileIDs, "fileIDs"},
    KeyLabel{bookmark_key::fileFlags, "resourceProps"},
    KeyLabel{bookmark_key::fileName, "fileName"},
    KeyLabel{bookmark_key::creationDate, "creationDate"},
    KeyLabel{bookmark_key::relativeDirsUp, "relativeDirsUp"},
    KeyLabel{bookmark_key::relativeDirsDown, "relativeDirsDown"},
    KeyLabel{bookmark_key::createdWithRelativeURL, "createdWithRelativeURL"},
    KeyLabel{bookmark_key::volumeDepths, "volInfoDepths"},
    KeyLabel{bookmark_key::volumePath, "volPath"},
    KeyLabel{bookmark_key::volumeURL, "volURL"},
    KeyLabel{bookmark_key::volumeName, "volName"},
    KeyLabel{bookmark_key::volumeUUID, "volUUID"},
    KeyLabel{bookmark_key::volumeCapacity, "volCapacity"},
    KeyLabel{bookmark_key::volumeCreationDate, "volCreationDate"},
    KeyLabel{bookmark_key::volumeFlags, "volProps"},
    KeyLabel{bookmark_key::volumeWasBoot, "volWasBoot"},
    KeyLabel{bookmark_key::volumeMountURL, "volMountURL"},
    KeyLabel{bookmark_key::componentsBelowHome, "volHomeDirRelativePathComponentCount"},
    KeyLabel{bookmark_key::userName, "userName"},
    KeyLabel{bookmark_key::userID, "userUID"},
    KeyLabel{bookmark_key::wasFileIDFormat, "wasFileIDFormat"},
    KeyLabel{bookmark_key::creationOptions, "creationOptions"},
    KeyLabel{bookmark_key::displayName, "displayName"},
    KeyLabel{0xF020, "effectiveIconData"},
    KeyLabel{0xF022, "typeBindingData"},
    KeyLabel{bookmark_key::aliasRecord, "aliasData"}};

} // namespace

std::string_view bookmarkKeyLabel(std::uint32_t key) {
    const auto* const found = std::ranges::find(labels, key, &KeyLabel::key);
    return found == labels.end() ? std::string_view() : found->label;
}

std::string_view recordTypeName(std::uint32_t type) {
    static constexpr std::array<std::pair<std::uint32_t, std::string_view>, 17> names{{
        {record_type::string, "string"},
        {record_type::data, "data"},
        {record_type::int8, "int8"},
        {record_type::int16, "int16"},
        {record_type::int32, "int32"},
        {record_type::int64, "int64"},
        {record_type::float32, "float32"},
        {record_type::float64, "float64"},
        {record_type::date, "date"},
        {record_type::booleanFalse, "false"},
        {record_type::booleanTrue, "true"},
        {record_type::array, "array"},
        {record_type::dictionary, "dictionary"},
        {record_type::uuid, "uuid"},
        {record_type::absoluteURL, "absoluteURL"},
        {record_type::relativeURL, "relativeURL"},
        {record_type::null, "null"},
    }};
    const auto* const found =
        std::ranges::find(names, type, &std::pair<std::uint32_t, std::string_view>::first);
    if (found != names.end()) {
        return found->second;
    }
    return (type & ~0xFFU) == record_type::numberClass ? "number" : "unknown";
}

} // namespace tolvane::platform
