// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/Preferences.h"

#include "base/IniText.h"

#include <QStandardPaths>

#include <algorithm>
#include <vector>

namespace kruv {

namespace {

enum class Kind { Setting, Control };

struct RegisteredDefault
{
    const char *key;
    QVariant value;
    Kind kind;
};

const std::vector<RegisteredDefault> &registeredDefaults()
{
    static const std::vector<RegisteredDefault> table = {
        {"shntoolNamesFormat", QStringLiteral("%number. %name %time"), Kind::Setting},
        {"maxThreads", 2, Kind::Setting},
        {"encodeOutputFormat", 2, Kind::Control},
        {"encodeFlacLevel", 5, Kind::Control},
        {"fixOutputFormat", 1, Kind::Control},
        {"fixFlacLevel", 4, Kind::Control},
        {"shntoolCommandOption", 0, Kind::Control},
        {"shntoolLenOption", 0, Kind::Control},
        {"shntoolOutputFormat", 1, Kind::Control},
        {"lossyOutputFormat", 0, Kind::Control},
        {"lossySliderLevel", 3, Kind::Control},
        {"lossyStepperLevel", 88, Kind::Control},
        {"lossyComboLevel", 160, Kind::Control},
        {"opusFrameSizeIndex", 3, Kind::Control},
        {"trashOrDelete", 0, Kind::Setting},
        {"lameStereoOption", 1, Kind::Setting},
        {"lameQValue", 3, Kind::Setting},
        {"ffpExtension", QStringLiteral("ffp.txt"), Kind::Setting},
        {"flacVerifyButton", 0, Kind::Control},
        {"flacKeepForeignMetadataButton", 0, Kind::Control},
        {"flacGenerateFFPButton", 0, Kind::Control},
        {"warnOnDelete", true, Kind::Setting},
        {"warnOnFilesSkipped", true, Kind::Setting},
        {"checksumFileUsesOutputDirName", false, Kind::Setting},
        {"encodeToSourceDirectory", 0, Kind::Control},
        {"decodeToSourceDirectory", 0, Kind::Control},
        {"encodeLossyToSourceDirectory", 0, Kind::Control},
        {"encodeKeepFolders", false, Kind::Control},
        {"decodeKeepFolders", false, Kind::Control},
        {"lossyKeepFolders", false, Kind::Control},
        {"proveOutputs", false, Kind::Setting},
        {"longestFirst", true, Kind::Setting},
        {"pauseOnBattery", false, Kind::Setting},
        {"noPaddingFlacTags", false, Kind::Setting},
        {"cdProviderText", QString(), Kind::Setting},
    };
    return table;
}

const RegisteredDefault *registeredDefault(const QString &key)
{
    const auto &table = registeredDefaults();
    const auto found = std::ranges::find_if(
        table, [&key](const RegisteredDefault &entry) { return key == QLatin1StringView(entry.key); });
    return found == table.end() ? nullptr : &*found;
}

} // namespace

Preferences::Preferences(const QString &file, ControlState controlState)
    : m_settings(file, IniText::settingsFormat())
    , m_controlState(controlState)
{
}

QString Preferences::userFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/kruv/kruv.conf");
}

void Preferences::registerControl(const QString &key, const QVariant &standard)
{
    const std::lock_guard guard(m_lock);
    if (!registeredDefault(key)) {
        m_controls.insert(key, standard);
    }
}

bool Preferences::isForgotten(const QString &key) const
{
    const RegisteredDefault *entry = registeredDefault(key);
    const bool isControl = entry ? entry->kind == Kind::Control : m_controls.contains(key);
    return m_controlState == ControlState::Defaults && isControl;
}

QVariant Preferences::standard(const QString &key) const
{
    const RegisteredDefault *entry = registeredDefault(key);
    return entry ? entry->value : m_controls.value(key);
}

QVariant Preferences::value(const QString &key) const
{
    const std::lock_guard guard(m_lock);
    const QVariant fallback = standard(key);
    return isForgotten(key) ? m_forgotten.value(key, fallback) : m_settings.value(key, fallback);
}

int Preferences::integer(const QString &key) const
{
    bool isNumber = false;
    const int stored = value(key).toInt(&isNumber);
    if (isNumber) {
        return stored;
    }
    const std::lock_guard guard(m_lock);
    return standard(key).toInt();
}

bool Preferences::boolean(const QString &key) const
{
    return value(key).toBool();
}

QString Preferences::string(const QString &key) const
{
    return value(key).toString();
}

void Preferences::setValue(const QString &key, const QVariant &value)
{
    const std::lock_guard guard(m_lock);
    if (isForgotten(key)) {
        m_forgotten.insert(key, value);
    } else {
        m_settings.setValue(key, value);
    }
}

void Preferences::setMaxThreads(int maxThreads)
{
    setValue(QStringLiteral("maxThreads"), maxThreads);
    Q_EMIT kruvMaxThreadsChangedNotification(maxThreads);
}

} // namespace kruv
