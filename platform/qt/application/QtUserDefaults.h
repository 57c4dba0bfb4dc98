#pragma once

#include "platform/services/UserDefaults.h"

#include <QByteArray>
#include <QSettings>
#include <QString>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// The user's settings in one file. A setting is written, by itself, when it is set, and the file is checked
/// before each reading, so that running instances see and keep each other's settings. Settings other than
/// numbers are not written again if the file has them already. If the file cannot be written, settings last
/// as long as this object.
///
/// Qt detects changes of the file by length and date: a change of another instance that keeps the length
/// within one tick of the clock is seen with the next one, and an equal value set meanwhile is not written.
///
/// Values of another type and empty keys read as absent; an empty key stores nothing. Texts are UTF-8.
class QtUserDefaults final : public UserDefaults {
public:
    /// Uses "tolvane/tolvane.conf" in the user's configuration folder.
    QtUserDefaults();
    explicit QtUserDefaults(const QString& file) : settings_(file, QSettings::IniFormat) {}

    /// True for "true" and "yes" in any case, and for numbers except zero.
    bool boolForKey(std::string_view key) const override;
    void setBool(bool value, std::string_view key) override {
        setValue(value ? QStringLiteral("true") : QStringLiteral("false"), key);
    }

    /// Every finite number reads back exactly as it was set.
    double doubleForKey(std::string_view key) const override;
    void setDouble(double value, std::string_view key) override;

    std::vector<std::string> textsForKey(std::string_view key) const;
    void setTexts(std::span<const std::string> texts, std::string_view key);

    QByteArray bytesForKey(std::string_view key) const;
    void setBytes(const QByteArray& bytes, std::string_view key) { setValue(bytes, key); }

private:
    QVariant valueForKey(std::string_view key) const;
    /// Writes the value unless the file has it already.
    void setValue(const QVariant& value, std::string_view key);
    void write(const QVariant& value, std::string_view key);

    /// Reading updates it with changes of other instances.
    mutable QSettings settings_;
};

/// Makes Qt's file panels, made afterwards, keep their own settings in the program's folder.
void keepToolkitSettingsBesideOurs();

} // namespace tolvane::platform
