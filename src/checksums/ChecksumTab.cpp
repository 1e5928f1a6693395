// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/ChecksumTab.h"

#include "app/PathNames.h"
#include "lossless/VerifyApeTask.h"
#include "lossless/VerifyFlacTask.h"
#include "lossless/VerifyTTATask.h"
#include "lossless/VerifyWavepackTask.h"
#include "tasks/KruvTaskQueue.h"

namespace kruv {

ChecksumTab::ChecksumTab(TabHost &host)
    : BaseTab(QStringLiteral("checksum"), host)
    , m_commandOptions({QStringLiteral("Verify audio files"), QStringLiteral("Create checksum file"),
                        QStringLiteral("Verify checksum files")})
    , m_createChecksumOptions({QStringLiteral("MD5"), QStringLiteral("ST5"), QStringLiteral("FFP")}, 3)
{
    connect(&m_commandOptions, &Control::changed, this, &ChecksumTab::displayRelevantOptions);
    ChecksumTab::displayRelevantOptions();
}

void ChecksumTab::displayRelevantOptions()
{
    const bool creates = m_commandOptions.selectedRow() == CreateList;
    m_createChecksumOptions.setEnabled(creates);
    m_createChecksumOptions.setHidden(!creates);
    m_sourceSaveButton.setEnabled(creates);
    m_sourceSaveButton.setHidden(!creates);
}

void ChecksumTab::executeCommand()
{
    if (fileList().isEmpty()) {
        return;
    }
    if (m_commandOptions.selectedRow() == VerifyAudio) {
        queueReports(audioVerifier);
    }
    clearFiles();
}

void ChecksumTab::queueReports(JobMaker (*makerFor)(const QString &file))
{
    const auto results = std::make_shared<KruvTaskResults>();
    std::vector<std::shared_ptr<KruvTask>> jobs;
    for (const QString &file : fileNames()) {
        if (const JobMaker maker = makerFor(file)) {
            jobs.push_back((this->*maker)(file, results));
            results->addTaskInSet(*jobs.back());
        }
    }
    host().taskQueue().addTasks(jobs);
}

ChecksumTab::JobMaker ChecksumTab::audioVerifier(const QString &file)
{
    static const QHash<QString, JobMaker> makers{
        {QStringLiteral("FLAC"), &ChecksumTab::verifyFlac},
        {QStringLiteral("APE"), &ChecksumTab::verifyAPE},
        {QStringLiteral("WV"), &ChecksumTab::verifyWavepack},
        {QStringLiteral("TTA"), &ChecksumTab::verifyTTA},
    };
    return makers.value(PathNames::fileType(file), nullptr);
}

std::shared_ptr<KruvTask> ChecksumTab::verifyFlac(const QString &file,
                                                  const std::shared_ptr<KruvTaskResults> &results)
{
    auto job = std::make_shared<VerifyFlacTask>(results, &host().taskQueue(), tool(QStringLiteral("flac")),
                                                QStringList{QStringLiteral("-t"), file});
    job->setTitle(QStringLiteral("Verify FLAC"));
    return job;
}

std::shared_ptr<KruvTask> ChecksumTab::verifyAPE(const QString &file,
                                                 const std::shared_ptr<KruvTaskResults> &results)
{
    return std::make_shared<VerifyApeTask>(results, &host().taskQueue(), tool(QStringLiteral("mac")),
                                           QStringList{QStringLiteral("-v"), file});
}

std::shared_ptr<KruvTask> ChecksumTab::verifyWavepack(const QString &file,
                                                      const std::shared_ptr<KruvTaskResults> &results)
{
    return std::make_shared<VerifyWavepackTask>(results, &host().taskQueue(),
                                                tool(QStringLiteral("wvunpack")),
                                                QStringList{QStringLiteral("-v"), file});
}

std::shared_ptr<KruvTask> ChecksumTab::verifyTTA(const QString &file,
                                                 const std::shared_ptr<KruvTaskResults> &results)
{
    return std::make_shared<VerifyTTATask>(results, &host().taskQueue(), tool(QStringLiteral("ttaenc")),
                                           QStringList{QStringLiteral("-t"), file});
}

} // namespace kruv
