// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/DemoVerb.h"

#include "cli/Console.h"
#include "cli/DemoAlbum.h"
#include "cli/ExitStatus.h"
#include "cli/JobSession.h"
#include "cli/TextReporter.h"
#include "cli/UsageError.h"
#include "formats/Records.h"
#include "tabs/ChecksumTab.h"
#include "tabs/EncodeTab.h"

#include <QDir>
#include <QTemporaryDir>

namespace kruv {

namespace {

void encode(KruvController &controller, QueueRun &queueRun, const QStringList &tracks)
{
    EncodeTab &tab = controller.encodeTab();
    tab.outputFormatMatrix().selectId(QString::fromLatin1(flacFormat.id));
    tab.flacVerifyButton().setOn(true);
    tab.generateFFPButton().setOn(true);
    tab.sourceEncodeButton().setOn(true);
    tab.addFiles(tracks);
    queueRun.run([&tab] { tab.executeCommand(); });
}

void verify(KruvController &controller, QueueRun &queueRun, const QString &folder)
{
    ChecksumTab &tab = controller.checksumTab();
    tab.commandOptions().select(ChecksumTab::VerifyAudio);
    tab.addFiles({folder});
    queueRun.run([&tab] { tab.executeCommand(); });
}

} // namespace

DemoVerb::DemoVerb(CLI::App &parent)
    : Verb(parent, "demo", tr("Make a short album, encode it to FLAC, verify it, and show what was done"))
{
    addOption("folder", m_folder, tr("Empty or new folder to work in (default: a new temporary one)"))
        ->type_name("DIR");
}

QString DemoVerb::makeFolder() const
{
    if (m_folder.empty()) {
        QTemporaryDir temporary(QDir::tempPath() + QStringLiteral("/kruv-demo-XXXXXX"));
        if (!temporary.isValid()) {
            throw UsageError(tr("no temporary folder can be made in %1 (%2); name one: kruv demo DIR")
                                 .arg(QDir::tempPath(), temporary.errorString()));
        }
        temporary.setAutoRemove(false);
        return temporary.path();
    }
    QString folder = QDir().absoluteFilePath(QString::fromStdString(m_folder));
    if (!QDir().mkpath(folder)) {
        throw UsageError(tr("%1 can't be made").arg(folder));
    }
    if (!QDir(folder).isEmpty()) {
        throw UsageError(tr("%1 is not empty; name a new folder").arg(folder));
    }
    return folder;
}

int DemoVerb::run()
{
    const CommonOptions options;
    JobSession session(options, std::make_unique<TextReporter>(TextReporter::Style{}));
    KruvController &controller = session.controller();
    QueueRun &queueRun = session.queueRun();
    controller.runRecorder().recordAs(QStringLiteral("demo"), QCoreApplication::arguments().mid(1));
    const QString folder = makeFolder();

    Console::writeOut(tr("Making three tagged AIFF tracks with a cover picture ...\n"));
    const QStringList tracks = DemoAlbum::make(folder);
    Console::writeOut(tr("Encoding them to FLAC, verified on the way, with a fingerprint list ...\n"));
    encode(controller, queueRun, tracks);
    Console::writeOut(tr("Testing the FLAC files ...\n"));
    verify(controller, queueRun, folder);
    const int status = queueRun.finish();
    Console::writeOut(tr("\nThe files lie in %1\n").arg(folder));
    for (const QString &name : QDir(folder).entryList(QDir::Files, QDir::Name)) {
        Console::writeOut(QStringLiteral("  %1\n").arg(name));
    }
    return status;
}

} // namespace kruv
