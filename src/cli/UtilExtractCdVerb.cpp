// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/UtilExtractCdVerb.h"

#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "tabs/KruvController.h"
#include "tabs/UtilTab.h"

#include <QEventLoop>
#include <QFileInfo>

namespace kruv {

namespace {

/// "3+12", or "5" for the one track.
CdTracks::Range parsedTracks(const std::string &given)
{
    const QString text = QString::fromStdString(given);
    const auto range = CdTracks::range(text.contains(u'+') ? text : text + u'+' + text);
    if (!range) {
        throw UsageError(
            UtilExtractCdVerb::tr("--tracks %1: give the first and the last track, such as 3+12").arg(text));
    }
    return *range;
}

} // namespace

UtilExtractCdVerb::UtilExtractCdVerb(CLI::App &parent)
    : TabVerb(parent, "extract-cd", tr("Extract tracks of an audio disc to WAV files, with a log"))
{
    declareCommonFlags(false);
    declareOutputFolder();
    addOption("--device", m_device, tr("Drive, where no track files are named: /dev/sr0"))
        ->type_name("DEV")
        ->excludes(app().get_option("paths"));
    addOption("--tracks", m_tracks, tr("First and last track (default: all)"))->type_name("A+B");
    addFlag("--one-file", m_oneFile, tr("All tracks into one file, audio.wav"));
    setFooter(tr("Example: tracks 3 to 12 of the disc in the drive\n"
                 "  kruv util extract-cd --device /dev/sr0 --tracks 3+12 --output ~/Disc"));
}

void UtilExtractCdVerb::listTracksOfDrive(UtilTab &tab) const
{
    const QString given = QString::fromStdString(m_device);
    const QString link = QFileInfo(given).canonicalFilePath(); // /dev/cdrom leads to the drive
    const QString device = link.isEmpty() ? given : link;
    if (!m_tracks.empty()) {
        tab.addTracksOfDrive(device, parsedTracks(m_tracks));
        return;
    }
    QEventLoop loop;
    QObject::connect(&tab, &UtilTab::tracksOfDriveListed, &loop, &QEventLoop::quit);
    tab.addTracksOfDrive(device);
    loop.exec();
}

void UtilExtractCdVerb::keepTracks(UtilTab &tab) const
{
    const CdTracks::Range kept = parsedTracks(m_tracks);
    QList<int> others;
    for (int row = 0; row < tab.fileList().count(); ++row) {
        const int track = CdTracks::number(tab.fileList().at(row)).value_or(0);
        if (track < kept.first || track > kept.last) {
            others.append(row);
        }
    }
    tab.deleteSelectedRows(others);
    if (tab.fileList().isEmpty()) {
        throw UsageError(tr("--tracks %1: none of the files is one of these tracks")
                             .arg(QString::fromStdString(m_tracks)));
    }
}

void UtilExtractCdVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    UtilTab &tab = controller.utilTab();
    if (paths.isEmpty() && m_device.empty()) {
        throw UsageError(tr("Name the track files of a disc, or the drive: --device /dev/sr0"));
    }
    queueRun.leaveOutResults();
    if (paths.isEmpty()) {
        listTracksOfDrive(tab);
    } else {
        takeIn(tab, paths);
        if (!m_tracks.empty()) {
            keepTracks(tab);
        }
    }
    tab.commandMatrix().select(UtilTab::CdExtraction);
    tab.oneTrackButton().setOn(m_oneFile);
    queueRun.run([&tab] { tab.executeCommand(); });
}

} // namespace kruv
