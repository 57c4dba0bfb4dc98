// platform/macos/ with a substitute of the system that answers from this machine's files, so that what every
// system answers is expected of it too. What it makes up, such as its bookmarks, is its own.
#include "platform/macos/bookmarks/MacBookmarks.h"
#include "platform/macos/facts/MacExtendedAttributeCalls.h"
#include "platform/macos/facts/MacFileManager.h"
#include "platform/macos/facts/MacURLResources.h"
#include "platform/macos/session/MacUserSession.h"
#include "tests/contracts/SystemUnderTest.h"
#include "tests/platform/macos/substitute/Substitute.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tolvane::tests::contracts {

namespace {

namespace fs = std::filesystem;
using platform::Date;
using platform::URL;

constexpr std::string_view urlStart = "file://";

CFTypeRef integer(std::uint64_t value, CFNumberType type = kCFNumberSInt64Type) {
    return macos::newNumber({type, static_cast<std::int64_t>(value)});
}

CFTypeRef date(const timespec& stamp) {
    const Date moment = Date::fromUnixTime(stamp.tv_sec, static_cast<std::uint32_t>(stamp.tv_nsec));
    return macos::newDate(moment.timeIntervalSinceReferenceDate());
}

const char* fileType(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return "NSFileTypeRegular";
    case S_IFDIR:
        return "NSFileTypeDirectory";
    case S_IFLNK:
        return "NSFileTypeSymbolicLink";
    case S_IFCHR:
        return "NSFileTypeCharacterSpecial";
    default:
        return "NSFileTypeUnknown";
    }
}

const char* typeIdentifier(mode_t mode, std::string_view path) {
    if (S_ISDIR(mode)) {
        return "public.folder";
    }
    return S_ISLNK(mode) ? "public.symlink" : path.ends_with(".txt") ? "public.plain-text" : "public.data";
}

/// What a made-up bookmark stores.
struct Stored {
    std::string path;
    std::uint64_t number = 0;

    std::string bytes() const {
        const std::string text = std::to_string(number) + " " + path;
        return "book " + std::to_string(text.size()) + " " + text;
    }

    static std::optional<Stored> fromBytes(const std::string& bytes) {
        std::istringstream stream(bytes);
        std::string mark;
        std::size_t size = 0;
        Stored stored;
        if (!(stream >> mark >> size) || mark != "book"
            || bytes.size() != static_cast<std::size_t>(stream.tellg()) + 1 + size) {
            return std::nullopt;
        }
        stream >> stored.number;
        stored.path.assign(bytes, static_cast<std::size_t>(stream.tellg()) + 1);
        return stored;
    }

    /// Where the item is: at its path, or anywhere in the test's folder.
    std::optional<std::string> find() const {
        struct stat status{};
        if (lstat(path.c_str(), &status) == 0) {
            return path;
        }
        const std::size_t folder = path.find("/tolvane-test-");
        if (folder == std::string::npos) {
            return std::nullopt;
        }
        for (const auto& entry :
             fs::recursive_directory_iterator(path.substr(0, path.find('/', folder + 1)))) {
            if (lstat(entry.path().c_str(), &status) == 0 && status.st_ino == number) {
                return entry.path().string();
            }
        }
        return std::nullopt;
    }
};

class PretendMac {
public:
    PretendMac() {
        substitute.resourceValues = [this] { return resourceValues(); };
        substitute.fileAttributes = [this] { return fileAttributes(); };
        substitute.bookmark = [this] {
            return substitute.calls.back().starts_with("bookmark in ") ? bookmarkInFile() : newBookmark();
        };
        substitute.resolvedItem = [this] { return resolvedItem(); };
        substitute.error = [this] {
            return macos::newError("NSPOSIXErrorDomain", failure_, std::strerror(failure_));
        };
        substitute.homeFolder = [] { return macos::newString("/"); };
        substitute.formattedDate = [](CFAbsoluteTime seconds) { return "on " + Date(seconds).description(); };
        substitute.listAttributes = [](const char* path, char* names, std::size_t size) {
            return static_cast<ssize_t>(syscall(SYS_listxattr, path, names, size));
        };
        substitute.getAttribute = [](const char* path, const char* name, void* value, std::size_t size) {
            return static_cast<ssize_t>(syscall(SYS_getxattr, path, name, value, size));
        };
    }
    PretendMac(const PretendMac&) = delete;
    PretendMac& operator=(const PretendMac&) = delete;
    ~PretendMac() = default;

    macos::Substitute substitute;
    platform::MacExtendedAttributeCalls extendedAttributes;
    platform::MacFileManager fileManager;
    platform::MacURLResources resources;
    platform::MacBookmarks bookmarks;
    platform::MacUserSession session;

private:
    CFTypeRef failed(int error) {
        failure_ = error;
        return nullptr;
    }

    std::optional<struct stat> statusOf(const std::string& path) {
        struct stat status{};
        if (lstat(path.c_str(), &status) != 0) {
            failed(errno);
            return std::nullopt;
        }
        return status;
    }

    std::string pathOfSubject() const { return substitute.subject.substr(urlStart.size()); }

    CFTypeRef resourceValues() {
        const std::string path = pathOfSubject();
        const auto status = statusOf(path);
        if (!status) {
            return nullptr;
        }
        std::vector<std::uint8_t> identifier(16);
        const std::uint64_t numbers[] = {status->st_ino, status->st_dev};
        std::memcpy(identifier.data(), numbers, sizeof numbers);
        std::vector<std::pair<CFTypeRef, CFTypeRef>> entries{
            {macos::newString("NSURLTypeIdentifierKey"),
             macos::newString(typeIdentifier(status->st_mode, path))},
            {macos::newString("NSURLFileResourceIdentifierKey"), macos::newData(identifier)}};
        if (S_ISREG(status->st_mode) || S_ISLNK(status->st_mode)) {
            const auto size = static_cast<std::uint64_t>(status->st_size);
            entries.emplace_back(macos::newString("NSURLFileSizeKey"), integer(size));
            entries.emplace_back(macos::newString("NSURLTotalFileSizeKey"), integer(size));
        }
        return macos::newDictionary(std::move(entries));
    }

    CFTypeRef fileAttributes() {
        const auto status = statusOf(substitute.subject);
        if (!status) {
            return nullptr;
        }
        return macos::newDictionary(
            {{macos::newString("NSFileSize"), integer(static_cast<std::uint64_t>(status->st_size))},
             {macos::newString("NSFilePosixPermissions"),
              integer(status->st_mode & 07777U, kCFNumberSInt16Type)},
             {macos::newString("NSFileSystemNumber"), integer(status->st_dev)},
             {macos::newString("NSFileSystemFileNumber"), integer(status->st_ino)},
             {macos::newString("NSFileOwnerAccountID"), integer(status->st_uid)},
             {macos::newString("NSFileGroupOwnerAccountID"), integer(status->st_gid)},
             {macos::newString("NSFileReferenceCount"), integer(status->st_nlink, kCFNumberSInt32Type)},
             {macos::newString("NSFileModificationDate"), date(status->st_mtim)},
             {macos::newString("NSFileType"), macos::newString(fileType(status->st_mode))}});
    }

    CFTypeRef newBookmark() {
        const std::string path = pathOfSubject();
        const auto status = statusOf(path);
        if (!status) {
            return nullptr;
        }
        const std::string bytes = Stored{path, status->st_ino}.bytes();
        return macos::newData({bytes.begin(), bytes.end()});
    }

    CFTypeRef bookmarkInFile() {
        if (!fs::is_regular_file(pathOfSubject())) {
            return failed(EINVAL);
        }
        std::ifstream stream(pathOfSubject(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
        return Stored::fromBytes(bytes) ? macos::newData({bytes.begin(), bytes.end()}) : failed(EINVAL);
    }

    CFTypeRef resolvedItem() {
        const auto stored = Stored::fromBytes(substitute.subject);
        const auto path = stored ? stored->find() : std::nullopt;
        const auto status = path ? statusOf(*path) : std::nullopt;
        if (!status) {
            return failed(stored ? ENOENT : EINVAL);
        }
        substitute.isStale = *path != stored->path || status->st_ino != stored->number;
        return macos::newURL(URL::fileURLWithPath(*path).absoluteString());
    }

    int failure_ = 0;
};

} // namespace

SystemUnderTest systemUnderTest() {
    return servicesOf(std::shared_ptr<const PretendMac>(std::make_shared<PretendMac>()), ENODATA);
}

} // namespace tolvane::tests::contracts
