#include "platform/freedesktop/DesktopPlaces.h"

#include "platform/values/Pieces.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QString>

#include <algorithm>
#include <array>
#include <optional>

namespace tolvane::platform {

namespace {

/// More is no list that a person keeps.
constexpr qint64 longestList = 65'536;

std::vector<URL> userFolders() {
    constexpr std::array kinds{QStandardPaths::HomeLocation,      QStandardPaths::DesktopLocation,
                               QStandardPaths::DocumentsLocation, QStandardPaths::DownloadLocation,
                               QStandardPaths::MusicLocation,     QStandardPaths::PicturesLocation,
                               QStandardPaths::MoviesLocation};
    std::vector<URL> folders;
    for (const auto kind : kinds) {
        const QString path = QStandardPaths::writableLocation(kind);
        if (QFileInfo(path).isDir()) {
            folders.push_back(URL::fileURLWithPath(QFile::encodeName(path).toStdString()));
        }
    }
    return folders;
}

std::string bookmarkList() {
    QFile file(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/gtk-3.0/bookmarks"));
    // A FIFO in its place would never answer.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return file.read(longestList).toStdString();
}

} // namespace

std::vector<URL> bookmarkedPlaces(std::string_view list) {
    std::vector<URL> places;
    for (const std::string_view line : nonEmptyPieces(list, '\n')) {
        if (const auto url = localFileURL(line.substr(0, line.find(' ')))) {
            places.push_back(URL::fileURLWithPath(url->path()));
        }
    }
    return places;
}

std::vector<URL> placesOfVolumes(const std::vector<std::string>& mountPoints) {
    static constexpr std::array<std::string_view, 3> folders{"/media/", "/run/media/", "/mnt/"};
    std::vector<URL> places;
    for (const std::string& mountPoint : mountPoints) {
        const bool isHidden = mountPoint.contains("/.");
        if (!isHidden
            && std::ranges::any_of(folders, [&](auto folder) { return mountPoint.starts_with(folder); })) {
            places.push_back(URL::fileURLWithPath(mountPoint));
        }
    }
    return places;
}

std::vector<URL> desktopPlaces(const std::vector<std::string>& mountPoints) {
    std::vector<URL> places;
    for (const auto& some : {userFolders(), bookmarkedPlaces(bookmarkList()), placesOfVolumes(mountPoints)}) {
        for (const URL& place : some) {
            if (std::ranges::find(places, place) == places.end()) {
                places.push_back(place);
            }
        }
    }
    return places;
}

} // namespace tolvane::platform
