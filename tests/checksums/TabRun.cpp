// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/TabRun.h"

#include "support/Wait.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

TabRun::TabRun()
    : preferences(folder.file(u"kruv.conf"_s))
    , controller(preferences, person, nullptr)
    , tab(controller.checksumTab())
{
}

TabRun::~TabRun()
{
    controller.applicationWillTerminate();
    waitForJobs();
}

void TabRun::waitForJobs()
{
    EXPECT_TRUE(waitUntil([this] { return controller.taskQueue().taskCount() == 0; }));
    drainPool();
    serveEvents();
}

QString TabRun::run(ChecksumTab::Command row, const QStringList &files)
{
    tab.commandOptions().select(row);
    tab.addFiles(files);
    person.resultsWindows.clear();
    tab.executeCommand();
    waitForJobs();
    QString shown;
    for (const auto &window : person.resultsWindows) {
        shown += window.text;
    }
    return shown;
}

void TabRun::create(const QString &kind, const QStringList &files)
{
    ASSERT_TRUE(tab.createChecksumOptions().selectId(kind.toLower()));
    tab.sourceSaveButton().setOn(true);
    EXPECT_EQ(run(ChecksumTab::CreateList, files), QString());
}

QString outputOf(const QString &program, const QStringList &arguments, const QString &folder, int *status)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(-1)) << program.toStdString();
    if (status) {
        *status = process.exitCode();
    }
    return QString::fromUtf8(process.readAll());
}

} // namespace kruv::test
