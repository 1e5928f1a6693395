// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolEnvironment.h"

#include "platform/Resources.h"

#include <QProcess>

#include <csignal>
#include <mutex>
#include <sys/prctl.h>
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
    return environment;
}

bool personAtTerminal()
{
    return isatty(STDIN_FILENO) == 1 && tcgetpgrp(STDIN_FILENO) == getpgrp();
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

QProcessEnvironment unbuffered(QProcessEnvironment environment)
{
    environment.insert(QStringLiteral("NSUnbufferedIO"), QStringLiteral("YES"));
    return environment;
}

void prepare(QProcess &process)
{
    process.setProcessChannelMode(QProcess::MergedChannels);
    if (personAtTerminal()) {
        process.setInputChannelMode(QProcess::ForwardedInputChannel);
    } else {
        process.setStandardInputFile(QProcess::nullDevice());
    }
    process.setChildProcessModifier([] {
        std::signal(SIGINT, SIG_IGN);
        prctl(PR_SET_PDEATHSIG, SIGTERM);
    });
}

} // namespace kruv::ToolEnvironment
