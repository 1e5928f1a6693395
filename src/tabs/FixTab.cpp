// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/FixTab.h"

#include "base/UserInterface.h"
#include "tabs/OutputPlan.h"
#include "tasks/KruvTaskQueue.h"

#include <QPointer>

namespace kruv {

namespace {

constexpr int flacLevels = 8;
constexpr int usualLevel = 5;

} // namespace

FixTab::FixTab(TabHost &host)
    : ConversionTab(QStringLiteral("fix SBE"), host)
    , m_outputFormatMatrix(
          {QStringLiteral("SHN"), QStringLiteral("FLAC"), QStringLiteral("WAV"), QStringLiteral("AIFF")}, 2)
    , m_flacLevelSlider(0, flacLevels, usualLevel)
    , m_shnMd5Option({QStringLiteral("No MD5"), QStringLiteral("1 MD5"), QStringLiteral("MD5 by disc*")})
{
    Preferences &preferences = host.preferences();
    m_outputFormatMatrix.tieTo(preferences, QStringLiteral("fixOutputFormat"));
    m_flacLevelSlider.tieTo(preferences, QStringLiteral("fixFlacLevel"));
    connect(&m_outputFormatMatrix, &Control::changed, this, &FixTab::displayRelevantOptions);
    FixTab::displayRelevantOptions();
}

void FixTab::displayRelevantOptions()
{
    const QString format = m_outputFormatMatrix.selectedTitle();
    const bool isFlac = format == u"FLAC";
    const bool isShn = format == u"SHN";
    m_flacFingerprintButton.setHidden(!isFlac);
    m_shnMd5Option.setHidden(!isShn);
    m_flacLevelSlider.setEnabled(isFlac);
    m_md5Label.setHidden(!isFlac && !isShn);
    if (isFlac || isShn) {
        m_md5Label.setText(isFlac ? tr("FLAC Fingerprint") : tr("MD5 Options"));
    }
}

void FixTab::executeCommand()
{
    const QString format = m_outputFormatMatrix.selectedTitle().toLower();
    if (fileList().isEmpty() || format.isEmpty() || !confirmDeletion(m_deleteOriginalsButton.isOn())) {
        return;
    }
    const auto folder = chooseOutputFolder();
    if (!folder || outputsCollide(OutputPlan(fileNames(), *folder, format),
                                  tr("Two of the files would give the same output"))) {
        return;
    }
    const bool writesFingerprints = m_flacFingerprintButton.isOn() && format == u"flac";
    const FixTask::Request request{.fileNames = fileNames(),
                                   .outputFormat = format,
                                   .outputPath = *folder,
                                   .md5Option = writesFingerprints ? QStringLiteral("FFP")
                                                                   : m_shnMd5Option.selectedTitle(),
                                   .flacLevel = m_flacLevelSlider.value()};
    const auto existing = agreeOnExisting(FixTask::outputs(request, host().preferences()));
    if (existing) {
        start(request, *existing);
    }
}

void FixTab::start(const FixTask::Request &request, FileCommit::Existing existing)
{
    auto job = std::make_shared<FixTask>(&host().taskQueue(), request, [tab = QPointer<FixTab>(this)] {
        if (tab) {
            tab->clearFiles();
        }
    });
    job->setMayReplace(existing == FileCommit::Existing::Replace);
    job->setDeleteOriginal(m_deleteOriginalsButton.isOn());
    host().taskQueue().addTask(std::move(job));
}

} // namespace kruv
