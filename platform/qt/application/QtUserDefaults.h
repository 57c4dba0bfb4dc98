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

/// The user's settings in one file. A setting is written when it is set, key by key, and the file is looked
/// at again before each reading, so that several running instances see and keep what the others set. Other
/// settings than numbers are not written again where the file has them already. Where the file cannot be
/// written, settings last as long as this object, and nobody is told. Qt sees by its length and date whether
/// the file has changed: another instance's change that keeps the length and comes within one tick of the
/// file system's clock is seen with the next one only, and a value that equals the one before it is then
/// taken to be there still.
///
/// A value of another kind than asked for, or an empty key, reads as if there were none; an empty key stores
/// nothing. Texts are UTF-8.
class QtUserDefaults final : public UserDefaults {
public:
    /// Uses "tolvane/tolvane.conf" in the user's configuration folder.
    QtUserDefaults();
    explicit QtUserDefaults(const QString& file);

    /// "true", "yes" in letters of either case, and numbers but zero stand for yes.
    bool boolForKey(std::string_view key) const override;
    void setBool(bool value, std::string_view key) override;

    /// Every finite number reads back exactly as it was set.
    double doubleForKey(std::string_view key) const override;
    void setDouble(double value, std::string_view key) override;

    std::vector<std::string> textsForKey(std::string_view key) const;
    void setTexts(std::span<const std::string> texts, std::string_view key);

    QByteArray bytesForKey(std::string_view key) const;
    void setBytes(const QByteArray& bytes, std::string_view key);

private:
    QVariant valueForKey(std::string_view key) const;
    /// Writes the value unless the file has it already.
    void setValue(const QVariant& value, std::string_view key);
    void write(const QVariant& value, std::string_view key);

    /// Reading it takes in what other instances wrote.
    mutable QSettings settings_;
};

/// Has what Qt's file panels remember for themselves kept in the same folder as the program's
/// settings, instead of in one that all programs share. For all panels made afterwards.
void keepToolkitSettingsBesideOurs();

} // namespace tolvane::platform
