// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/UtilTab.h"

#include "base/FileStamp.h"
#include "base/PathNames.h"
#include "base/UserInterface.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "journal/DoneRecord.h"
#include "tasks/KruvTaskQueue.h"
#include "util/DeEmphasisTask.h"
#include "util/ReplayGainTask.h"
#include "util/SoxSampleRateConversionTask.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace kruv {

namespace {

/// Of renames that are to come: they leave what a stamp holds as it is.
std::vector<DoneRecord> recordOf(const QList<BatchRename::Move> &moves)
{
    std::vector<DoneRecord> plan;
    plan.reserve(static_cast<std::size_t>(moves.size()));
    for (const BatchRename::Move &move : moves) {
        const FileStamp stamp = FileStamp::of(move.from).value_or(FileStamp());
        plan.push_back({.entry = {move.from, move.to, EntryRecord::Action::Rename},
                        .receipt = {.sources = {{move.from, stamp}}, .outputs = {{move.to, stamp}}}});
    }
    return plan;
}

/// Those that are of one of the formats by their names.
QStringList filesOf(QStringList files, const QList<const Format *> &formats)
{
    files.removeIf([&formats](const QString &file) {
        return !formats.contains(Formats::ofType(PathNames::fileType(file)));
    });
    return files;
}

} // namespace

UtilTab::UtilTab(TabHost &host, CdAccess access)
    : BaseTab(QStringLiteral("util"), host)
    , m_access(std::move(access))
    , m_table(fileList())
    , m_commandMatrix({{QStringLiteral("extract-cd"), tr("CD Extraction")},
                       {QStringLiteral("rename"), tr("Batch Rename")},
                       {QStringLiteral("replay-gain"), tr("Flac Replay Gain")},
                       {QStringLiteral("de-emphasis"), tr("de-emphasis")},
                       {QStringLiteral("dvd-audio"), tr("DVD Audio Disc")},
                       {QStringLiteral("resample"), tr("Sample Rate Conversion")}})
    , m_replayGainMatrix({{QStringLiteral("add"), tr("Add")}, {QStringLiteral("remove"), tr("Remove")}}, 2)
{
    m_sampleRateCombo.setText(sampleRates().constFirst());
    connect(&m_commandMatrix, &Control::changed, this, &UtilTab::displayRelevantOptions);
    connect(&fileList(), &QAbstractItemModel::modelReset, this, &UtilTab::showDiscSize);
    UtilTab::displayRelevantOptions();
}

QStringList UtilTab::sampleRates()
{
    return {QStringLiteral("44.1 kHz"), QStringLiteral("48 kHz"),    QStringLiteral("88.2 kHz"),
            QStringLiteral("96 kHz"),   QStringLiteral("176.4 kHz"), QStringLiteral("192 kHz")};
}

void UtilTab::displayRelevantOptions()
{
    if (m_asking) {
        return; // the choice is put back while its question is answered
    }
    chooseCommand();
    const int command = m_commandMatrix.selectedIndex();
    m_replayGainMatrix.setEnabled(command == ReplayGain);
    m_oneTrackButton.setEnabled(command == CdExtraction);
    m_sampleRateCombo.setEnabled(command == SampleRateConversion);
    m_dvdAudioDiscTime.setHidden(command != DvdAudio);
    m_dvdAudioDiscSize.setHidden(command != DvdAudio);
    m_table.setFormatsShown(command == DvdAudio);
}

void UtilTab::chooseCommand()
{
    const int chosen = m_commandMatrix.selectedIndex();
    if (chosen == m_commandMatrixLastSelectedCell) {
        return;
    }
    if (chosen == DvdAudio) {
        const QScopedValueRollback asking(m_asking, true);
        Q_EMIT m_commandMatrix.changed(); // the choice shows while its question is asked
        const int answer = host().userInterface().ask(
            UserInterface::Matter::ReadingFormats,
            tr("You have chosen \"DVD Audio Disc.\" This will scan the files in the list for format "
               "information. Are you sure you want to continue?"),
            QString(), {UserInterface::yes(), UserInterface::no()}, 0);
        if (answer != 0) {
            m_commandMatrix.select(m_commandMatrixLastSelectedCell);
            return;
        }
    }
    m_commandMatrixLastSelectedCell = chosen;
    m_authorsOnceScanned = false;
    if (chosen == DvdAudio) {
        m_table.forgetFormats(); // the files may have changed since
        findFormatInfo();
    }
}

void UtilTab::filesAdded()
{
    findFormatInfo();
}

void UtilTab::executeCommand()
{
    if (fileList().isEmpty() || m_busy) {
        return;
    }
    const QScopedValueRollback busy(m_busy, true);
    switch (m_commandMatrix.selectedIndex()) {
    case CdExtraction:
        return extractCd();
    case Rename:
        return batchRename();
    case ReplayGain:
        return replayGain();
    case DeEmphasis:
        return applyDeEmphasis();
    case DvdAudio:
        return authorDvd();
    case SampleRateConversion:
        return convertSampleRate();
    default:
        return;
    }
}

void UtilTab::batchRename()
{
    const auto prefix = host().userInterface().enterText(
        m_commandMatrix.selectedTitle(), tr("Enter the Prefix that you want the files to start with:"),
        QString());
    if (!prefix || prefix->isEmpty()) {
        return;
    }
    if (prefix->contains(u'/') || prefix->contains(QChar::Null)) {
        return showError(tr("A file name can't hold \"/\". No file was renamed."));
    }
    try {
        const auto moves = BatchRename::plan(fileNames(), *prefix);
        BatchRename::requirePossible(moves);
        host().doRecorded(label(), recordOf(moves), [&moves] { BatchRename::carryOut(moves); });
        clearFiles();
        if (!host().plan()) {
            Q_EMIT filesRenamed(moves);
        }
    } catch (const BatchRename::Refused &reason) {
        showError(QString::fromUtf8(reason.what()));
    }
}

void UtilTab::replayGain()
{
    const QStringList files = filesOf(fileNames(), {&flacFormat});
    if (files.isEmpty()) {
        return showError(tr("No Flac files in file list"));
    }
    QStringList folders;
    QHash<QString, QStringList> filesOf;
    for (const QString &file : files) {
        const QString folder = PathNames::folderOf(file);
        if (!filesOf.contains(folder)) {
            folders.append(folder);
        }
        filesOf[folder].append(file);
    }
    const auto what =
        m_replayGainMatrix.selectedId() == u"add" ? ReplayGainTask::What::Add : ReplayGainTask::What::Remove;
    for (const QString &folder : folders) {
        submit(std::make_shared<ReplayGainTask>(&host().taskQueue(), tool(QStringLiteral("metaflac")), what,
                                                filesOf[folder]));
    }
}

void UtilTab::convertSampleRate()
{
    constexpr qsizetype unitLength = 4;    // " kHz"
    constexpr double highestRate = 1000.0; // kHz; what is above was meant in Hz
    const QString rate =
        m_sampleRateCombo.text().chopped(std::min(unitLength, m_sampleRateCombo.text().size()));
    bool isNumber = false;
    const double number = rate.toDouble(&isNumber);
    if (!isNumber || !(number > 0 && number <= highestRate)) {
        return showError(tr("\"%1\" is no sample rate").arg(m_sampleRateCombo.text()));
    }
    runSox(SoxSampleRateConversionTask::suffix(),
           [this, rate](const QString &file, const QString &folder, const Results &results) {
               return std::make_shared<SoxSampleRateConversionTask>(&host().taskQueue(), file, rate, folder,
                                                                    results);
           });
}

void UtilTab::applyDeEmphasis()
{
    runSox(DeEmphasisTask::suffix(),
           [this](const QString &file, const QString &folder, const Results &results) {
               return std::make_shared<DeEmphasisTask>(&host().taskQueue(), file, folder, results);
           });
}

void UtilTab::runSox(const QString &suffix, const SoxJob &makeJob)
{
    const QStringList files = filesOf(fileNames(), {&wavFormat, &aiffFormat});
    if (files.isEmpty()) {
        return showError(tr("No Wav/Aiff files in file list"));
    }
    const auto folder = chooseOutputFolder();
    if (!folder) {
        return;
    }
    QHash<QString, QString> sourceOf;
    for (const QString &file : files) {
        const QString output = SoxTask::outputFor(file, *folder, suffix);
        if (sourceOf.contains(output)) {
            return showError(
                tr("\"%1\" and \"%2\" would both be written to \"%3\"").arg(sourceOf[output], file, output));
        }
        sourceOf.insert(output, file);
    }
    const auto existing = agreeOnExisting(sourceOf.keys());
    if (!existing) {
        return;
    }
    const auto results = std::make_shared<KruvTaskResults>();
    std::vector<std::shared_ptr<KruvTask>> jobs;
    for (const QString &file : files) {
        const auto job = makeJob(file, *folder, results);
        job->setMayReplace(existing == FileCommit::Existing::Replace);
        results->addTaskInSet(*job);
        jobs.push_back(job);
    }
    submit(jobs);
}

void UtilTab::showError(const QString &message)
{
    host().userInterface().alert(UserInterface::errorTitle(), message, acknowledgeButton());
}

} // namespace kruv
