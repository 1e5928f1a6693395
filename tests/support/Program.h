// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/Database.h"
#include "platform/Resources.h"
#include "support/Audio.h"
#include "support/Files.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <csignal>
#include <functional>
#include <gtest/gtest.h>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

struct Outcome
{
    int status = -1;
    QByteArray out;
    QByteArray err;
};

/// The built program as a person runs it, with a home of its own.
class Program : public testing::Test
{
protected:
    std::unique_ptr<QProcess> start(const QStringList &arguments, const std::function<void()> &inChild = {})
    {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, folder.path());
        environment.insert(u"XDG_CONFIG_HOME"_s, folder.path());
        environment.insert(u"KRUV_RESOURCES"_s, resources);
        environment.insert(u"KRUV_JOURNAL"_s, journal);
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(music);
        process->setStandardInputFile(QProcess::nullDevice());
        if (inChild) {
            process->setChildProcessModifier(inChild);
        }
        process->start(program, arguments);
        return process;
    }
    /// To the process alone: the number 0 would be the whole group of the tests.
    static void send(const QProcess &process, int signal)
    {
        ASSERT_GT(process.processId(), 0) << "it has ended";
        kill(static_cast<pid_t>(process.processId()), signal);
    }
    Outcome end(QProcess &process)
    {
        constexpr int longest = 60'000; // milliseconds
        EXPECT_TRUE(process.state() == QProcess::NotRunning || process.waitForFinished(longest));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput(), process.readAllStandardError()};
    }
    Outcome run(const QStringList &arguments, const std::function<void()> &inChild = {})
    {
        return end(*start(arguments, inChild));
    }
    Outcome encode(const QStringList &more)
    {
        return run(QStringList{u"encode"_s, u"--to"_s, u"flac"_s} + more);
    }
    /// Changes what is recorded.
    void inJournal(const char *statement, const QByteArray &bytes = {})
    {
        Database database(journal, Database::Mode::Write, [] { return true; });
        Statement prepared = database.prepare(statement);
        (bytes.isNull() ? prepared : prepared.with(bytes)).run();
    }
    void shell(const QString &name, const QByteArray &script)
    {
        resources = folder.makeFolder(u"resources"_s);
        const QString path = folder.write(u"resources/"_s + name, "#!/bin/sh\n" + script);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString wav(const QString &name, std::size_t frames = 500)
    {
        writeWav(music + u'/' + name, {.frames = frames});
        return music + u'/' + name;
    }
    QStringList files(const QString &filter) const
    {
        return QDir(music).entryList({filter}, QDir::Files, QDir::Name);
    }

    TemporaryFolder folder;
    QString music = folder.makeFolder(u"music"_s);
    QString resources = resourcesFolder();
    QString journal; // none where it is empty
    QString program = QStringLiteral(KRUV_PROGRAM);
};

inline std::vector<QJsonObject> objects(const QByteArray &text)
{
    std::vector<QJsonObject> found;
    EXPECT_TRUE(text.endsWith('\n'));
    for (const QByteArray &line : text.chopped(1).split('\n')) {
        const QJsonDocument document = QJsonDocument::fromJson(line);
        EXPECT_TRUE(document.isObject()) << line.constData();
        found.push_back(document.object());
    }
    return found;
}

} // namespace kruv::test
