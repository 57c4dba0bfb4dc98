#pragma once

#include "platform/services/Bookmarks.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileManager.h"
#include "platform/services/URLResources.h"
#include "platform/services/UserSession.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Tests of what every system's services must answer alike. Their sources are part of several test programs,
/// each of which says which services they are about by its own `systemUnderTest`.
namespace tolvane::tests::contracts {

/// The services of one system, and what is known to be different on each.
struct SystemUnderTest {
    std::shared_ptr<const void> owner; ///< Keeps the services.
    const platform::URLResources* resources = nullptr;
    const platform::FileManager* fileManager = nullptr;
    const platform::ExtendedAttributeCalls* attributeCalls = nullptr;
    const platform::Bookmarks* bookmarks = nullptr;
    const platform::UserSession* session = nullptr;
    int noSuchAttribute = 0; ///< The error number for an attribute that is not there.
};

/// Defined by each test program.
SystemUnderTest systemUnderTest();

/// The services that a platform offers as members.
template <typename Platform>
SystemUnderTest servicesOf(std::shared_ptr<const Platform> platform, int noSuchAttribute) {
    const Platform& offered = *platform;
    return {std::move(platform), &offered.resources, &offered.fileManager, &offered.extendedAttributes,
            &offered.bookmarks,  &offered.session,   noSuchAttribute};
}

/// A test of a system's services with a temporary folder of its own.
class ContractTest : public testing::Test {
protected:
    static platform::URL urlOf(const std::string& path) { return platform::URL::fileURLWithPath(path); }

    platform::Data bookmarkOf(const std::string& path) const {
        const auto data = system.bookmarks->bookmarkData(urlOf(path));
        EXPECT_TRUE(data) << path << ": " << data.error().localizedDescription();
        return data.value_or(platform::Data());
    }

    bool isStale(const platform::Data& bookmark) const {
        const auto found = system.bookmarks->URLByResolvingBookmarkData(bookmark);
        return found && found->isStale;
    }

    /// Where the bookmark's item is, or why it is not found.
    std::string resolved(const platform::Data& bookmark) const {
        const auto found = system.bookmarks->URLByResolvingBookmarkData(bookmark);
        if (!found) {
            return found.error().localizedDescription();
        }
        std::string path = found->url ? found->url->path() : "no item";
        // Systems write folders with or without a last slash.
        return path.size() > 1 && path.ends_with('/') ? path.substr(0, path.size() - 1) : path;
    }

    const TemporaryFolder folder;
    /// Its path without links.
    const std::string real = std::filesystem::canonical(folder.path()).string();
    const SystemUnderTest system = systemUnderTest();
};

/// Asks a system's services for the facts of items. A failure fails the test.
class FactsTest : public ContractTest {
protected:
    using Keys = std::vector<std::string_view>;

    platform::Dictionary resources(const std::string& path, const Keys& keys) const {
        const auto values = system.resources->resourceValuesForKeys(urlOf(path), keys);
        EXPECT_TRUE(values) << path << ": " << values.error().localizedDescription();
        return values.value_or(platform::Dictionary());
    }

    std::optional<std::int64_t> resource(const std::string& path, std::string_view key) const {
        return number(resources(path, {key}), key);
    }

    std::optional<std::string> typeOf(const std::string& path) const {
        return valueIn<std::string>(
            resources(path, {platform::NSURLTypeIdentifierKey}), platform::NSURLTypeIdentifierKey);
    }

    platform::Dictionary attributes(const std::string& path) const {
        const auto found = system.fileManager->attributesOfItemAtPath(path);
        EXPECT_TRUE(found) << path << ": " << found.error().localizedDescription();
        return found.value_or(platform::Dictionary());
    }

    std::optional<std::string> kindOf(const std::string& path) const {
        return valueIn<std::string>(attributes(path), platform::NSFileType);
    }

    static std::optional<std::int64_t> number(const platform::Dictionary& values, std::string_view key) {
        const platform::Value* value = values.find(key);
        return value == nullptr ? std::nullopt : value->exactInt64();
    }

    template <typename T>
    static std::optional<T> valueIn(const platform::Dictionary& values, std::string_view key) {
        const platform::Value* value = values.find(key);
        const T* found = value == nullptr ? nullptr : value->as<T>();
        return found == nullptr ? std::nullopt : std::optional(*found);
    }
};

} // namespace tolvane::tests::contracts
