#include "platform/qt/application/QtUserDefaults.h"

#include "platform/values/DecimalNumber.h"

#include <QMetaType>
#include <QStandardPaths>
#include <QStringList>
#include <QVariant>

#include <array>
#include <charconv>
#include <system_error>

namespace tolvane::platform {

namespace {

QString usualFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
           + QStringLiteral("/tolvane");
}

QString textOf(std::string_view bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

/// A list of one text is stored like that text alone.
bool isSame(const QVariant& stored, const QVariant& value) {
    return stored.isValid()
           && (stored == value
               || (value.typeId() == QMetaType::QStringList
                   && stored.toStringList() == value.toStringList()));
}

} // namespace

QtUserDefaults::QtUserDefaults() : QtUserDefaults(usualFolder() + QStringLiteral("/tolvane.conf")) {}

QVariant QtUserDefaults::valueForKey(std::string_view key) const {
    if (key.empty()) {
        return {};
    }
    settings_.sync();
    return settings_.value(textOf(key));
}

void QtUserDefaults::setValue(const QVariant& value, std::string_view key) {
    // Each writing waits for the disk.
    if (!isSame(valueForKey(key), value)) {
        write(value, key);
    }
}

void QtUserDefaults::write(const QVariant& value, std::string_view key) {
    if (key.empty()) {
        return;
    }
    settings_.setValue(textOf(key), value);
    settings_.sync();
}

bool QtUserDefaults::boolForKey(std::string_view key) const {
    const QVariant value = valueForKey(key);
    if (value.typeId() != QMetaType::QString) {
        return false;
    }
    const QString text = value.toString();
    return text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0
           || text.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0 || doubleForKey(key) != 0.0;
}

double QtUserDefaults::doubleForKey(std::string_view key) const {
    const QVariant value = valueForKey(key);
    if (value.typeId() != QMetaType::QString) {
        return 0.0;
    }
    return decimalNumber(value.toString().toStdString()).value_or(0.0);
}

void QtUserDefaults::setDouble(double value, std::string_view key) {
    // The shortest digits that read back as the same number, whatever the locale.
    std::array<char, 32> digits{};
    const auto [end, fault] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    if (fault == std::errc()) {
        write(QString::fromLatin1(digits.data(), end - digits.data()), key);
    }
}

std::vector<std::string> QtUserDefaults::textsForKey(std::string_view key) const {
    const QVariant value = valueForKey(key);
    if (value.typeId() != QMetaType::QStringList && value.typeId() != QMetaType::QString) {
        return {};
    }
    std::vector<std::string> texts;
    for (const QString& text : value.toStringList()) {
        texts.push_back(text.toStdString());
    }
    return texts;
}

void QtUserDefaults::setTexts(std::span<const std::string> texts, std::string_view key) {
    QStringList list;
    for (const std::string& text : texts) {
        list.append(QString::fromStdString(text));
    }
    setValue(list, key);
}

QByteArray QtUserDefaults::bytesForKey(std::string_view key) const {
    const QVariant value = valueForKey(key);
    return value.typeId() == QMetaType::QByteArray ? value.toByteArray() : QByteArray();
}

void keepToolkitSettingsBesideOurs() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, usualFolder());
}

} // namespace tolvane::platform
