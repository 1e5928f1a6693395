// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/FixTab.h"

#include "base/UserInterface.h"
#include "formats/Records.h"
#include "tabs/FormatControls.h"
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
    , m_outputFormatMatrix(FormatControls::choicesOf(targets()), 2)
    , m_flacLevelSlider({.minimum = 0, .maximum = flacLevels, .step = 1}, usualLevel)
    , m_shnMd5Option({{QStringLiteral("none"), tr("No MD5")},
                      {QStringLiteral("one"), tr("1 MD5")},
                      {QStringLiteral("disc"), tr("MD5 by disc*")}})
{
    Preferences &preferences = host.preferences();
    m_outputFormatMatrix.tieTo(preferences, QStringLiteral("fixOutputFormat"));
    m_flacLevelSlider.tieTo(preferences, QStringLiteral("fixFlacLevel"));
    connect(&m_outputFormatMatrix, &Control::changed, this, &FixTab::displayRelevantOptions);
    FixTab::displayRelevantOptions();
}

QList<const Format *> FixTab::targets()
{
    return {&shortenFormat, &flacFormat, &wavFormat, &aiffFormat};
}

const Format *FixTab::target() const
{
    return targets().value(m_outputFormatMatrix.selectedIndex());
}

FixTask::ListKind FixTab::list() const
{
    using Kind = FixTask::ListKind;
    if (target() == &flacFormat) {
        return m_flacFingerprintButton.isOn() ? Kind::Fingerprints : Kind::None;
    }
    const QString id = m_shnMd5Option.selectedId();
    return id == u"one" ? Kind::Md5 : id == u"disc" ? Kind::Md5ByDisc : Kind::None;
}

void FixTab::displayRelevantOptions()
{
    const bool isFlac = target() == &flacFormat;
    const bool isShn = target() == &shortenFormat;
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
    if (fileList().isEmpty() || !target() || isSettling() ||
        !confirmDeletion(m_deleteOriginalsButton.isOn())) {
        return;
    }
    const auto folder = chooseOutputFolder();
    if (!folder || outputsCollide(OutputPlan(fileNames(), {.folder = *folder}, target()->extension()))) {
        return;
    }
    const FixTask::Request request{.fileNames = fileNames(),
                                   .target = target(),
                                   .outputPath = *folder,
                                   .list = list(),
                                   .flacLevel = m_flacLevelSlider.value()};
    const auto existing = agreeOnExisting(FixTask::outputs(request, host().preferences()));
    if (!existing) {
        return;
    }
    const bool deletes = m_deleteOriginalsButton.isOn();
    const auto go = [this, request, existing, deletes](const LossQuestion::Answer &answer) {
        start(request, *existing, {.deletes = deletes, .answer = answer});
    };
    if (!deletes) {
        go({});
        return;
    }
    lossQuestion().settle(
        {.files = request.fileNames, .target = target(), .label = target()->label.toString()},
        worksInBackground(), go);
}

void FixTab::start(const FixTask::Request &request, FileCommit::Existing existing, const Originals &originals)
{
    auto job = std::make_shared<FixTask>(&host().taskQueue(), request, [tab = QPointer<FixTab>(this)] {
        if (tab) {
            tab->clearFiles();
        }
    });
    job->setMayReplace(existing == FileCommit::Existing::Replace);
    job->setDeleteOriginal(originals.deletes);
    for (const QString &reason : originals.answer.kept) {
        job->failAfterwards(reason);
    }
    submit(job);
}

} // namespace kruv
