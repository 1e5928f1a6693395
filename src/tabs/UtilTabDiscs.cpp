// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What the utility tab does with discs: extracting audio discs and making DVD-Audio images.

#include "base/InParallel.h"
#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "platform/UnmountedDisc.h"
#include "tabs/UtilTab.h"
#include "tasks/KruvTaskQueue.h"
#include "util/CDExtractSCSIProviderHelper.h"
#include "util/DVDAuthorTask.h"
#include "util/FormatSummary.h"

#include <QFileInfo>
#include <QScopedValueRollback>

#include <stdexcept>
#include <utility>
#include <vector>

namespace kruv {

QStringList UtilTab::drives() const
{
    return CDExtractSCSIProviderHelper::drives(m_access.root);
}

void UtilTab::addTracksOfDrive(const QString &device, CdTracks::Range tracks)
{
    addCheckedFiles(CdTracks::namesFor(device, tracks));
}

void UtilTab::addTracksOfDrive(const QString &device)
{
    m_work.start([this, device, audioTracksIn = m_access.audioTracksIn](const std::stop_token &) {
        const auto tracks = audioTracksIn(device);
        return [this, device, tracks] {
            if (tracks) {
                addTracksOfDrive(device, *tracks);
            } else {
                showError(QFileInfo::exists(device) ? tr("There is no audio disc in %1").arg(device)
                                                    : tr("There is no drive %1").arg(device));
            }
            Q_EMIT tracksOfDriveListed();
        };
    });
}

QString UtilTab::getProvider(const QString &bsdName) const
{
    QString fixed = host().preferences().string(QStringLiteral("cdProviderText"));
    if (CDExtractSCSIProviderHelper::isKnownProvider(fixed)) {
        return fixed;
    }
    if (bsdName.isEmpty()) {
        throw std::runtime_error(tr("the files are not on an audio disc").toStdString());
    }
    QString provider = CDExtractSCSIProviderHelper(bsdName, m_access.root).runTask();
    if (provider.isEmpty()) {
        throw std::runtime_error(tr("there is no optical drive %1").arg(bsdName).toStdString());
    }
    return provider;
}

CDExtractTask::Request UtilTab::cdRequest(const QString &folder, const QString &bsdName) const
{
    CDExtractTask::Request request;
    request.provider = getProvider(bsdName);
    request.fileNames = CdTracks::reNumberCdTracks(fileNames());
    request.trackString = CdTracks::getTrackNumberForExtract(request.fileNames);
    request.oneTrack = m_oneTrackButton.isOn();
    request.discName = DiscArbitration::discName(PathNames::folderOf(request.fileNames.value(0)));
    request.outputFolder = folder;
    if (request.trackString.isEmpty()) {
        throw std::runtime_error(tr("no file in the list begins with the number of its track").toStdString());
    }
    return request;
}

void UtilTab::extractCd()
{
    const auto folder = chooseOutputFolder();
    if (!folder) {
        return;
    }
    const QString volume = PathNames::folderOf(fileNames().constFirst());
    const QString bsdName = m_access.arbitration->discIdForVolumePath(volume);
    CDExtractTask::Request request;
    try {
        request = cdRequest(*folder, bsdName);
    } catch (const std::runtime_error &problem) {
        return showError(tr("Error %1").arg(QString::fromUtf8(problem.what())));
    }
    const auto existing = agreeOnExisting(CDExtractTask::outputs(request));
    if (!existing) {
        return;
    }
    auto disc = bsdName.isEmpty() ? nullptr : std::make_unique<UnmountedDisc>(m_access.arbitration, bsdName);
    auto job = std::make_shared<CDExtractTask>(&host().taskQueue(), tool(QStringLiteral("cdda2wav")),
                                               std::move(request), std::move(disc));
    job->setMayReplace(existing == FileCommit::Existing::Replace);
    submit(job);
}

QHash<QString, AudioFormatObject> UtilTab::formatsOf(const QStringList &files,
                                                     const std::stop_token &stop) const
{
    const std::size_t threads = threadsForOneJob(host().taskQueue().maxThreads());
    std::vector<AudioFormatObject> found(static_cast<std::size_t>(files.size()));
    inParallel(
        found.size(), threads, [&stop] { return stop.stop_requested(); },
        [&](std::size_t index) { found[index] = formatSummary(files[static_cast<qsizetype>(index)]); });
    QHash<QString, AudioFormatObject> formats;
    for (qsizetype index = 0; index < files.size(); ++index) {
        formats.insert(files[index], found[static_cast<std::size_t>(index)]);
    }
    return formats;
}

void UtilTab::findFormatInfo()
{
    constexpr qsizetype atOnce = 64; // files, so that the table fills as they are read
    const QStringList files =
        m_commandMatrixLastSelectedCell == DvdAudio ? m_table.unknown(atOnce) : QStringList();
    // Where nobody looks at the table, the command reads them when it needs them.
    if (m_scanning || files.isEmpty() || !worksInBackground()) {
        return;
    }
    m_scanning = true;
    m_work.start([this, files](const std::stop_token &stop) {
        return [this, formats = formatsOf(files, stop)] {
            m_scanning = false;
            m_table.addFormats(formats);
            formatsFound();
        };
    });
}

void UtilTab::formatsFound()
{
    showDiscSize();
    findFormatInfo();
    if (m_scanning || m_commandMatrixLastSelectedCell != DvdAudio) {
        return;
    }
    if (std::exchange(m_authorsOnceScanned, false)) {
        makeImage();
    } else {
        tellOfMismatch();
    }
}

bool UtilTab::tellOfMismatch()
{
    const bool matches = fileList().isEmpty() || m_table.commonFormat();
    if (!matches) {
        host().userInterface().alert(
            tr("The Files in the list must match in sample rate, bit depth and number of channels."),
            QString(), acknowledgeButton());
    }
    return !matches;
}

void UtilTab::showDiscSize()
{
    const auto format = m_table.commonFormat();
    const double seconds = m_table.totalTime();
    m_dvdAudioDiscTime.setText(parseTimeAsString(seconds));
    m_dvdAudioDiscSize.setText(format ? parseSizeFromTimeAsString(seconds, format->sampleRate,
                                                                  format->bitsPerChannel, format->channels)
                                      : QString());
}

void UtilTab::authorDvd()
{
    findFormatInfo();
    m_authorsOnceScanned = m_scanning;
    if (m_scanning) {
        return; // the person may change his mind meanwhile
    }
    m_table.addFormats(formatsOf(m_table.unknown(fileList().count()), {}));
    showDiscSize();
    makeImage();
}

void UtilTab::makeImage()
{
    const QScopedValueRollback busy(m_busy, true);
    if (tellOfMismatch()) {
        return;
    }
    const auto folder = chooseOutputFolder();
    if (!folder) {
        return;
    }
    const auto existing = agreeOnExisting({DVDAuthorTask::imageIn(*folder), DVDAuthorTask::logIn(*folder)});
    if (existing) {
        auto job = std::make_shared<DVDAuthorTask>(&host().taskQueue(), fileNames(), *folder);
        job->setMayReplace(existing == FileCommit::Existing::Replace);
        submit(job);
    }
}

} // namespace kruv
