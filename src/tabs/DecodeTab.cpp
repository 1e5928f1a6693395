// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/DecodeTab.h"

#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "convert/AiffToWavAndViceVersaTask.h"
#include "convert/DecodeALACTask.h"
#include "convert/DecodeAPETask.h"
#include "convert/DecodeFlacTask.h"
#include "convert/DecodeOpusTask.h"
#include "convert/DecodeSHNTask.h"
#include "convert/DecodeTTATask.h"
#include "convert/DecodeWavpackTask.h"
#include "formats/CodecCommandLine.h"
#include "formats/flac/FlacCommandLine.h"
#include "tabs/OutputPlan.h"
#include "tasks/KruvTaskQueue.h"

#include <algorithm>
#include <vector>

namespace kruv {

namespace {

const QString flac = QStringLiteral("FLAC");
const QString aiff = QStringLiteral("AIFF");

QString outputExtension(const QString &format)
{
    return format == aiff ? QStringLiteral("aiff") : QStringLiteral("wav");
}

} // namespace

/// One source type and the job that decodes it.
struct DecodeTab::SourceRow
{
    QStringView fileType;
    std::shared_ptr<KruvTask> (*make)(DecodeTab &tab, const QString &fileName, const QString &folder,
                                      const QString &format);
};

template <class Job>
std::shared_ptr<KruvTask> DecodeTab::make(DecodeTab &tab, const QString &fileName, const QString &folder,
                                          const QString &format)
{
    return std::make_shared<Job>(&tab.host().taskQueue(), fileName, folder, format);
}

const DecodeTab::SourceRow DecodeTab::sourceRows[] = {
    {u"FLAC", [](DecodeTab &tab, const QString &fileName, const QString &folder,
                 const QString &format) { return tab.decodeFlac(fileName, folder, format); }},
    {u"SHN", [](DecodeTab &tab, const QString &fileName, const QString &folder,
                const QString &format) { return tab.decodeSHN(fileName, folder, format); }},
    {u"WV", make<DecodeWavpackTask>},
    {u"TTA", make<DecodeTTATask>},
    {u"APE", make<DecodeAPETask>},
    {u"OPUS", make<DecodeOpusTask>},
    {u"M4A", make<DecodeALACTask>},
    {u"WAV", make<AiffToWavAndViceVersaTask>},
    {u"AIFF", make<AiffToWavAndViceVersaTask>},
    {u"AIF", make<AiffToWavAndViceVersaTask>},
};

DecodeTab::DecodeTab(TabHost &host)
    : ConversionTab(QStringLiteral("decode"), host)
    , m_outputFormatMatrix({QStringLiteral("WAV"), aiff}, 2)
{
    m_sourceDecodeButton.tieTo(host.preferences(), QStringLiteral("decodeToSourceDirectory"));
    m_flacOptionsLabel.setText(QStringLiteral("FLAC options"));
    showFLacOptions(false);
}

void DecodeTab::showFLacOptions(bool show)
{
    m_decodeFlacThroughErrors.setHidden(!show);
    m_flacKeepForeignMetadataButton.setHidden(!show);
    m_flacOptionsLabel.setHidden(!show);
}

void DecodeTab::filesAdded()
{
    FileList &list = fileList();
    for (int row = 0; row < list.count(); ++row) {
        if (PathNames::fileType(list.at(row)) == flac) {
            showFLacOptions(true);
            break;
        }
    }
    BaseTab::filesAdded();
}

void DecodeTab::clearFiles()
{
    showFLacOptions(false);
    BaseTab::clearFiles();
}

void DecodeTab::executeCommand()
{
    if (fileList().isEmpty()) {
        return;
    }
    const QString format = m_outputFormatMatrix.selectedTitle();
    if (!confirmDeletion(m_deleteOriginalsButton.isOn())) {
        return;
    }
    const auto folder = chooseOutputFolderUnless(m_sourceDecodeButton);
    if (folder && !outputsCollide(OutputPlan(fileNames(), *folder, outputExtension(format)), clashTitle())) {
        queueJobs(*folder, format);
        clearFiles();
    }
}

void DecodeTab::queueJobs(const QString &chosenFolder, const QString &format)
{
    std::vector<std::shared_ptr<KruvTask>> jobs;
    QStringList withoutJob;
    for (const QString &fileName : fileNames()) {
        const QString folder = chosenFolder.isEmpty() ? PathNames::folderOf(fileName) : chosenFolder;
        if (auto job = jobFor(fileName, folder, format)) {
            job->setDeleteOriginal(m_deleteOriginalsButton.isOn());
            jobs.push_back(std::move(job));
        } else {
            withoutJob.append(fileName);
        }
    }
    reportWithoutJob(withoutJob, format);
    host().taskQueue().addTasks(jobs);
}

std::shared_ptr<KruvTask> DecodeTab::jobFor(const QString &fileName, const QString &folder,
                                            const QString &format)
{
    const QString fileType = PathNames::fileType(fileName);
    const auto *row = std::ranges::find_if(
        sourceRows, [&fileType](const SourceRow &each) { return each.fileType == fileType; });
    return row == std::end(sourceRows) ? nullptr : row->make(*this, fileName, folder, format);
}

std::shared_ptr<KruvTask> DecodeTab::decodeFlac(const QString &fileName, const QString &outputPath,
                                                const QString &format)
{
    const FlacCommandLine::DecodeRequest request{
        .source = fileName,
        .output = PathNames::outputPath(outputPath, fileName, outputExtension(format)),
        .keepForeignMetadata = m_flacKeepForeignMetadataButton.isOn(),
        .throughErrors = m_decodeFlacThroughErrors.isOn(),
        .toAiff = format == aiff,
    };
    return std::make_shared<DecodeFlacTask>(fileName, &host().taskQueue(), tool(QStringLiteral("flac")),
                                            FlacCommandLine::decode(request));
}

std::shared_ptr<KruvTask> DecodeTab::decodeSHN(const QString &fileName, const QString &outputPath,
                                               const QString &format)
{
    return shntoolJob(outputExtension(format), outputPath, fileName);
}

std::shared_ptr<KruvTask> DecodeTab::decodeWavpack(const QString &fileName, const QString &outputPath,
                                                   const QString &format)
{
    return shntoolJob(CodecCommandLine::wvunpackEncoder(outputExtension(format)), outputPath, fileName);
}

std::shared_ptr<KruvTask> DecodeTab::shntoolJob(const QString &encoder, const QString &folder,
                                                const QString &fileName)
{
    return std::make_shared<DecodeSHNTask>(&host().taskQueue(), tool(QStringLiteral("shntool")),
                                           CodecCommandLine::shntoolConvert(encoder, folder, fileName));
}

} // namespace kruv
