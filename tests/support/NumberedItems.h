#pragma once

#include "platform/services/URLResources.h"
#include "platform/values/Error.h"

#include <cerrno>
#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::tests {

/// Items by path, each with a number; other paths do not exist.
class NumberedItems final : public platform::URLResources {
public:
    std::map<std::string, unsigned char> identities;

    platform::Result<platform::Dictionary> resourceValuesForKeys(
        const platform::URL& url, std::span<const std::string_view> /*keys*/) const override {
        const auto item = identities.find(url.path());
        if (item == identities.end()) {
            return std::unexpected(platform::posixError(ENOENT));
        }
        return platform::Dictionary{
            {"NSURLFileResourceIdentifierKey", platform::Data(16, std::byte{item->second})}};
    }
};

} // namespace tolvane::tests
