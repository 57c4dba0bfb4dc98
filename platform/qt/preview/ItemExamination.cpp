#include "platform/qt/preview/ItemExamination.h"

#include "platform/qt/text/VisibleText.h"

#include <QLocale>

#include <algorithm>

namespace tolvane::platform {

namespace {

using namespace Qt::StringLiterals;

void readFront(const FileContents& files, ItemExamination& examination) {
    auto file = files.openForReading(examination.path);
    if (!file) {
        examination.openFailure = file.error();
        return;
    }
    examination.front.resize(examinedFrontLength);
    const auto length = (*file)->read(0, examination.front);
    examination.front.resize(length.value_or(0));
    if (length) {
        examination.file = *std::move(file);
    } else {
        examination.openFailure = length.error();
    }
}

QString permissionsText(std::uint32_t permissions) {
    constexpr std::uint32_t setUser = 04000;
    constexpr std::uint32_t setGroup = 02000;
    constexpr std::uint32_t sticky = 01000;
    QString text = u"rwxrwxrwx"_s;
    for (int bit = 0; bit < text.size(); ++bit) {
        if ((permissions & (0400U >> static_cast<unsigned>(bit))) == 0) {
            text[bit] = u'-';
        }
    }
    const auto mark = [&](std::uint32_t flag, int position, QChar small, QChar large) {
        if ((permissions & flag) != 0) {
            text[position] = text[position] == u'x' ? small : large;
        }
    };
    mark(setUser, 2, u's', u'S');
    mark(setGroup, 5, u's', u'S');
    mark(sticky, 8, u't', u'T');
    return u"%1 (%2)"_s.arg(text, QString::number(permissions, 8).rightJustified(4, u'0'));
}

QString reasonText(std::error_code reason) {
    return QString::fromLocal8Bit(reason.message());
}

/// Whether a text begins as pictures do that are written as text.
bool beginsLikeAPicture(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const bool isPortableMap = text.size() > 2 && text[0] == 'P' && text[1] >= '1' && text[1] <= '6'
                               && std::string_view(" \t\r\n").contains(text[2]);
    const bool isSvg = text.starts_with('<') && text.contains("<svg");
    const bool isPixmap = text.starts_with("/* XPM") || text.starts_with("#define ");
    return isPortableMap || isSvg || isPixmap || text.starts_with("%PDF-");
}

} // namespace

bool ItemExamination::showsTheSameAs(const ItemExamination& other) const {
    return path == other.path && destination == other.destination && openFailure == other.openFailure
           && item == other.item && target == other.target;
}

ItemExamination examineItem(const FileContents& files, const std::string& path) {
    ItemExamination examination;
    examination.path = path;
    examination.item = files.lookAtItem(path);
    examination.target = examination.item;
    if (examination.isLink()) {
        if (auto destination = files.destinationOfSymbolicLink(path)) {
            examination.destination = *std::move(destination);
        }
        examination.target = files.lookAtTarget(path);
    }
    if (examination.target && examination.target->kind == ItemKind::regularFile) {
        readFront(files, examination);
    }
    return examination;
}

Presentation presentationOf(const ItemExamination& item) {
    if (item.isFolder()) {
        return Presentation::folder;
    }
    if (item.file == nullptr || item.front.empty()) {
        return Presentation::facts;
    }
    if (!textEncodingOf(item.front)) {
        return Presentation::decoded;
    }
    const std::string_view text(reinterpret_cast<const char*>(item.front.data()), item.front.size());
    return beginsLikeAPicture(text) ? Presentation::textUnlessMore : Presentation::text;
}

std::vector<Fact> factsOf(const ItemExamination& item) {
    std::vector<Fact> facts;
    if (item.isLink()) {
        facts.push_back({u"Symbolic link to"_s, item.destination ? visibleText(*item.destination) : u"?"_s});
    }
    const auto& shown = item.target ? item.target : item.item;
    if (shown) {
        facts.push_back({u"Kind"_s, kindName(shown->kind)});
        if (shown->kind == ItemKind::regularFile) {
            facts.push_back({u"Size"_s, sizeText(shown->size)});
        }
        facts.push_back({u"Modified"_s, QString::fromStdString(shown->modificationDate.description())});
        facts.push_back({u"Permissions"_s, permissionsText(shown->permissions)});
    }
    facts.push_back({u"Path"_s, visibleText(item.path)});
    return facts;
}

QString obstacleOf(const ItemExamination& item) {
    if (!item.item) {
        return u"The item cannot be accessed: %1."_s.arg(reasonText(item.item.error()));
    }
    if (!item.target) {
        return u"The target of the symbolic link cannot be accessed: %1."_s.arg(
            reasonText(item.target.error()));
    }
    switch (item.target->kind) {
    case ItemKind::regularFile:
        if (item.openFailure) {
            return u"The file cannot be read: %1."_s.arg(reasonText(item.openFailure));
        }
        return item.front.empty() ? u"The file is empty."_s : QString();
    case ItemKind::folder:
        return {};
    default:
        return u"Only regular files can be previewed; this is a %1."_s.arg(
            item.target->kind == ItemKind::fifo ? u"FIFO"_s : kindName(item.target->kind).toLower());
    }
}

QString kindName(ItemKind kind) {
    switch (kind) {
    case ItemKind::regularFile:
        return u"Regular file"_s;
    case ItemKind::folder:
        return u"Folder"_s;
    case ItemKind::symbolicLink:
        return u"Symbolic link"_s;
    case ItemKind::fifo:
        return u"FIFO (named pipe)"_s;
    case ItemKind::socket:
        return u"Socket"_s;
    case ItemKind::characterDevice:
        return u"Character device"_s;
    case ItemKind::blockDevice:
        return u"Block device"_s;
    case ItemKind::unknown:
        break;
    }
    return u"Item of unknown kind"_s;
}

QString sizeText(std::uint64_t bytes) {
    const QString exact = countText(bytes);
    if (bytes < 1000) {
        return bytes == 1 ? u"1 byte"_s : u"%1 bytes"_s.arg(exact);
    }
    const auto rounded = QLocale(QLocale::English, QLocale::UnitedStates)
                             .formattedDataSize(
                                 static_cast<qint64>(std::min(bytes, static_cast<std::uint64_t>(INT64_MAX))),
                                 2, QLocale::DataSizeSIFormat);
    return u"%1 bytes (%2)"_s.arg(exact, rounded);
}

QString countText(std::uint64_t count) {
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(static_cast<qulonglong>(count));
}

} // namespace tolvane::platform
