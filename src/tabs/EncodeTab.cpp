// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/EncodeTab.h"

#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "checksums/CreateFFPTask.h"
#include "checksums/CreateMD5Task.h"
#include "checksums/ListText.h"
#include "convert/EncodeALACTask.h"
#include "convert/EncodeALACToAPETask.h"
#include "convert/EncodeALACToFlacTask.h"
#include "convert/EncodeApeTask.h"
#include "convert/EncodeFlacTask.h"
#include "convert/EncodeSHNTask.h"
#include "convert/EncodeSHNToFlacTask.h"
#include "convert/EncodeTTATask.h"
#include "convert/EncodeWavpackTask.h"
#include "convert/EncodeWavpackToFlacTask.h"
#include "formats/CodecCommandLine.h"
#include "formats/flac/FlacCommandLine.h"
#include "tasks/KruvTaskQueue.h"

#include <algorithm>
#include <vector>

namespace kruv {

namespace {

const QString flac = QStringLiteral("FLAC");

constexpr int flacLevels = 8;
constexpr int apeSlowest = 5000;
constexpr int apeFastest = 1000;
constexpr int apeNormal = 2000;

} // namespace

/// What the jobs of one command share.
struct EncodeTab::Command
{
    std::shared_ptr<KruvTaskResults> results;
    bool overwrite = false;
};

/// One output format: how a source's job is made, and whether its jobs share the command's results.
struct EncodeTab::FormatRow
{
    QStringView format;
    bool inResultsSet;
    std::shared_ptr<KruvTask> (*make)(EncodeTab &tab, const OutputPlan::Entry &entry, const Command &command);
};

const EncodeTab::FormatRow EncodeTab::formatRows[] = {
    {u"FLAC", true,
     [](EncodeTab &tab, const OutputPlan::Entry &entry, const Command &command) {
         return tab.encodeFLAC(entry.source, entry.folder, command.results, command.overwrite);
     }},
    {u"SHN", true,
     [](EncodeTab &tab, const OutputPlan::Entry &entry, const Command &command) {
         return tab.encodeSHN(entry.source, entry.folder, command.results);
     }},
    {u"WV", false,
     [](EncodeTab &tab, const OutputPlan::Entry &entry, const Command &) {
         return tab.encodeWavpack(entry.source, entry.folder);
     }},
    {u"TTA", false,
     [](EncodeTab &tab, const OutputPlan::Entry &entry, const Command &) {
         return tab.encodeTTA(entry.source, entry.folder);
     }},
    {u"APE", false,
     [](EncodeTab &tab, const OutputPlan::Entry &entry, const Command &) {
         return tab.encodeAPE(entry.source, entry.folder);
     }},
    {u"M4A", false,
     [](EncodeTab &tab, const OutputPlan::Entry &entry, const Command &) -> std::shared_ptr<KruvTask> {
         return std::make_shared<EncodeALACTask>(&tab.host().taskQueue(), entry.source, entry.folder);
     }},
};

EncodeTab::EncodeTab(TabHost &host)
    : ConversionTab(QStringLiteral("encode"), host)
    , m_outputFormatMatrix({QStringLiteral("SHN"), QStringLiteral("WV"), flac, QStringLiteral("TTA"),
                            QStringLiteral("APE"), QStringLiteral("M4A")},
                           2)
    , m_flacSlider(0, flacLevels, 5)
    , m_apeSlider(apeFastest, apeSlowest, apeNormal, apeFastest)
    , m_wavepackFormatMatrix({QStringLiteral("Fast"), QStringLiteral("High")}, 2)
{
    Preferences &preferences = host.preferences();
    m_outputFormatMatrix.tieTo(preferences, QStringLiteral("encodeOutputFormat"));
    m_sourceEncodeButton.tieTo(preferences, QStringLiteral("encodeToSourceDirectory"));
    m_flacSlider.tieTo(preferences, QStringLiteral("encodeFlacLevel"));
    m_flacVerifyButton.tieTo(preferences, QStringLiteral("flacVerifyButton"));
    m_flacKeepForeignMetadataButton.tieTo(preferences, QStringLiteral("flacKeepForeignMetadataButton"));
    m_generateFFPButton.tieTo(preferences, QStringLiteral("flacGenerateFFPButton"));
    connect(&m_outputFormatMatrix, &Control::changed, this, &EncodeTab::displayRelevantOptions);
    EncodeTab::displayRelevantOptions();
}

void EncodeTab::displayRelevantOptions()
{
    const QString format = m_outputFormatMatrix.selectedTitle();
    const bool isFlac = format == flac;
    m_generateMD5Button.setEnabled(format == u"SHN");
    m_flacVerifyButton.setEnabled(isFlac);
    m_flacLaxButton.setEnabled(isFlac);
    m_flacSlider.setEnabled(isFlac);
    m_flacKeepForeignMetadataButton.setEnabled(isFlac);
    m_generateFFPButton.setEnabled(isFlac);
    m_apeSlider.setEnabled(format == u"APE");
    m_wavepackFormatMatrix.setEnabled(format == u"WV");
}

void EncodeTab::executeCommand()
{
    const QString format = m_outputFormatMatrix.selectedTitle();
    const auto *row =
        std::ranges::find_if(formatRows, [&format](const FormatRow &each) { return each.format == format; });
    if (fileList().isEmpty() || row == std::end(formatRows) ||
        !confirmDeletion(m_deleteOriginalsButton.isOn())) {
        return;
    }
    const auto folder = chooseOutputFolderUnless(m_sourceEncodeButton);
    if (!folder) {
        return;
    }
    const OutputPlan plan(fileNames(), *folder, format.toLower());
    bool overwrite = false;
    if (mayWriteOutputs(format, plan, overwrite)) {
        queueJobs(*row, plan, overwrite);
        clearFiles();
    }
}

bool EncodeTab::mayWriteOutputs(const QString &format, const OutputPlan &plan, bool &overwrite)
{
    if (outputsCollide(plan, clashTitle())) {
        return false;
    }
    if (format == flac) {
        if (!replacesFiles(plan, flac)) {
            return true;
        }
        overwrite = askToOverwrite({});
        return overwrite;
    }
    if (isFileClash(fileNames(), plan.outputs())) {
        host().userInterface().alert(clashTitle(), QString(), acknowledgeButton());
        return false;
    }
    return true;
}

void EncodeTab::addFollowUp(const QString &format, const OutputPlan &plan, KruvTaskResults &results)
{
    if (format == u"SHN" && m_generateMD5Button.isOn()) {
        results.setTaskAfterSetDone(
            std::make_shared<CreateMD5Task>(&host().taskQueue(), plan.outputs(), md5FileFor(plan)));
    } else if (format == flac && m_generateFFPButton.isOn()) {
        const QString name =
            QStringLiteral("fingerprint.") + host().preferences().string(QStringLiteral("ffpExtension"));
        results.setTaskAfterSetDone(
            std::make_shared<CreateFFPTask>(&host().taskQueue(), plan.outputsByFolder(), name));
    }
}

QString EncodeTab::md5FileFor(const OutputPlan &plan) const
{
    return ListText::pathIn(plan.entries().front().folder, host().preferences(), QStringLiteral("md5sum"),
                            QStringLiteral("md5"));
}

void EncodeTab::queueJobs(const FormatRow &row, const OutputPlan &plan, bool overwrite)
{
    const Command command{std::make_shared<KruvTaskResults>(), overwrite};
    addFollowUp(row.format.toString(), plan, *command.results);
    std::vector<std::shared_ptr<KruvTask>> jobs;
    QStringList withoutJob;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        auto job = row.make(*this, entry, command);
        if (!job) {
            withoutJob.append(entry.source);
            continue;
        }
        if (row.inResultsSet) {
            command.results->addTaskInSet(*job);
        }
        job->setDeleteOriginal(m_deleteOriginalsButton.isOn());
        jobs.push_back(std::move(job));
    }
    reportWithoutJob(withoutJob, row.format.toString());
    host().taskQueue().addTasks(jobs);
}

std::shared_ptr<KruvTask> EncodeTab::encodeFLAC(const QString &fileName, const QString &outputPath,
                                                const std::shared_ptr<KruvTaskResults> &results,
                                                bool overwrite)
{
    KruvTaskQueue *queue = &host().taskQueue();
    const QString type = PathNames::fileType(fileName);
    const int level = m_flacSlider.value();
    const bool verify = m_flacVerifyButton.isOn();
    if (type == u"SHN" || type == u"APE") {
        return std::make_shared<EncodeSHNToFlacTask>(
            queue, tool(QStringLiteral("shntool")),
            CodecCommandLine::shntoolToFlac(level, m_flacLaxButton.isOn(), verify, outputPath, fileName),
            type, results);
    }
    if (type == u"M4A") {
        return std::make_shared<EncodeALACToFlacTask>(queue, fileName, outputPath, level, verify, results);
    }
    if (type == u"WV") {
        return std::make_shared<EncodeWavpackToFlacTask>(queue, fileName, outputPath, level, verify, results);
    }
    if (type == u"TTA") {
        return nullptr; // flac would take it for raw samples
    }
    const FlacCommandLine::EncodeRequest request{
        .source = fileName,
        .output = PathNames::outputPath(outputPath, fileName, QStringLiteral("flac")),
        .level = level,
        .lax = m_flacLaxButton.isOn(),
        .keepForeignMetadata = m_flacKeepForeignMetadataButton.isOn(),
        .verify = verify,
        .overwrite = overwrite,
    };
    return std::make_shared<EncodeFlacTask>(fileName, queue, tool(flac.toLower()),
                                            FlacCommandLine::encode(request), results);
}

std::shared_ptr<KruvTask> EncodeTab::encodeSHN(const QString &fileName, const QString &outputPath,
                                               const std::shared_ptr<KruvTaskResults> &results)
{
    return std::make_shared<EncodeSHNTask>(
        &host().taskQueue(), tool(QStringLiteral("shntool")),
        CodecCommandLine::shntoolConvert(QStringLiteral("shn"), outputPath, fileName), results);
}

std::shared_ptr<KruvTask> EncodeTab::encodeWavpack(const QString &fileName, const QString &outputPath)
{
    const QString level =
        m_wavepackFormatMatrix.selectedIndex() == 0 ? QStringLiteral("-f") : QStringLiteral("-h");
    return std::make_shared<EncodeWavpackTask>(&host().taskQueue(), fileName, level, outputPath);
}

std::shared_ptr<KruvTask> EncodeTab::encodeTTA(const QString &fileName, const QString &outputPath)
{
    return std::make_shared<EncodeTTATask>(&host().taskQueue(), fileName, outputPath);
}

std::shared_ptr<KruvTask> EncodeTab::encodeAPE(const QString &fileName, const QString &outputPath)
{
    const QString level = QString::number(m_apeSlider.value());
    if (PathNames::fileType(fileName) == u"M4A") {
        return std::make_shared<EncodeALACToAPETask>(&host().taskQueue(), fileName, outputPath, level);
    }
    return std::make_shared<EncodeApeTask>(&host().taskQueue(), fileName, level, outputPath);
}

} // namespace kruv
