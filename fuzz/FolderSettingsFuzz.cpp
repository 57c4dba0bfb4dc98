// Parses any bytes as the settings of a folder.
#include "containers/FolderSettings.h"
#include "fuzz/Fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const std::span<const std::byte> bytes = fuzz::bytesOf(data, size);
    const auto settings = containers::readFolderSettings(bytes);
    if (!settings) {
        fuzz::require(settings.error().offset <= size, "a fault lies within the bytes");
        fuzz::require(!settings.error().expected.empty(), "a fault says what was expected");
        return 0;
    }
    fuzz::require(containers::isLikeFolderSettings(bytes), "a file that is read begins like one");
    std::size_t total = 0;
    for (const containers::FolderSetting& setting : *settings) {
        fuzz::require(setting.code.size() == 4 && setting.type.size() == 4, "codes have four letters");
        fuzz::require(
            setting.value.empty()
                || (setting.value.data() >= bytes.data()
                    && setting.value.data() + setting.value.size() <= bytes.data() + size),
            "a value lies within the bytes");
        total += setting.value.size();
    }
    fuzz::require(total <= size, "all values together are no longer than the bytes");
    return 0;
}
