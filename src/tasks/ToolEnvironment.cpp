// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolEnvironment.h"

#include "platform/Resources.h"

#include <mutex>
#include <string_view>
#include <unistd.h>

namespace kruv::ToolEnvironment {

namespace {

bool isUtf8Locale(const QString &locale)
{
    return locale.contains(u"utf-8", Qt::CaseInsensitive) || locale.contains(u"utf8", Qt::CaseInsensitive);
}

void setUtf8CharacterType(QProcessEnvironment &environment)
{
    const QString everything = environment.value(QStringLiteral("LC_ALL"));
    if (!everything.isEmpty()) {
        if (!isUtf8Locale(everything)) {
            environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        }
        return;
    }
    QString characterType = environment.value(QStringLiteral("LC_CTYPE"));
    if (characterType.isEmpty()) {
        characterType = environment.value(QStringLiteral("LANG"));
    }
    if (!isUtf8Locale(characterType)) {
        environment.insert(QStringLiteral("LC_CTYPE"), QStringLiteral("C.UTF-8"));
    }
}

QProcessEnvironment make(const QString &resources)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    appendToPath(environment, resources);
    setUtf8CharacterType(environment);
    environment.insert(QStringLiteral("NSUnbufferedIO"), QStringLiteral("YES"));
    return environment;
}

std::vector<std::string> makeEntries(const QProcessEnvironment &environment)
{
    const QProcessEnvironment inherited = QProcessEnvironment::systemEnvironment();
    std::vector<std::string> all;
    for (char **each = environ; *each != nullptr; ++each) {
        const std::string_view entry = *each;
        const QString name = QString::fromLocal8Bit(entry.substr(0, entry.find('=')));
        if (environment.contains(name) && environment.value(name) == inherited.value(name)) {
            all.emplace_back(entry);
        }
    }
    for (const QString &name : environment.keys()) {
        const QString value = environment.value(name);
        if (!inherited.contains(name) || inherited.value(name) != value) {
            all.push_back((name + u'=' + value).toLocal8Bit().toStdString());
        }
    }
    return all;
}

} // namespace

QProcessEnvironment base()
{
    // Shared by all jobs: ten thousand waiting jobs must not hold ten thousand copies of the environment.
    static std::mutex lock;
    static QString cachedPath;
    static QString cachedResources;
    static QProcessEnvironment cached;
    const std::lock_guard guard(lock);
    const QString path = qEnvironmentVariable("PATH");
    const QString resources = resourcesFolder();
    if (cached.isEmpty() || path != cachedPath || resources != cachedResources) {
        cached = make(resources);
        cachedPath = path;
        cachedResources = resources;
    }
    return cached;
}

void appendToPath(QProcessEnvironment &environment, const QString &folder)
{
    const QString key = QStringLiteral("PATH");
    environment.insert(key, environment.value(key) + u':' + folder);
}

std::vector<std::string> entries(const QProcessEnvironment &environment)
{
    // Most tools get the very same one, which compares by its address; writing it out anew was a tenth of
    // what a short job costs us.
    static std::mutex lock;
    static QProcessEnvironment known;
    static std::vector<std::string> cached;
    const std::lock_guard guard(lock);
    if (cached.empty() || environment != known) {
        cached = makeEntries(environment);
        known = environment;
    }
    return cached;
}

} // namespace kruv::ToolEnvironment
