// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/DecodeTab.h"

#include "base/PathNames.h"
#include "base/UserInterface.h"
#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/flac/FlacOptions.h"
#include "tabs/FormatControls.h"
#include "tasks/KruvTaskQueue.h"

#include <vector>

namespace kruv {

namespace {

/// By the file's content; by its name where the content is of no known kind, so that a job says so.
const Format *formatOf(const QString &file)
{
    const Format *format = Formats::identify(file);
    return format && format->decode ? format : Formats::ofType(PathNames::fileType(file));
}

} // namespace

DecodeTab::DecodeTab(TabHost &host)
    : ConversionTab(QStringLiteral("decode"), host)
    , m_outputFormatMatrix(FormatControls::choicesOf(targets()), 2)
{
    m_sourceDecodeButton.tieTo(host.preferences(), QStringLiteral("decodeToSourceDirectory"));
    m_flacOptionsLabel.setText(tr("FLAC options"));
    showFLacOptions(false);
}

QList<const Format *> DecodeTab::targets()
{
    return {&wavFormat, &aiffFormat};
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
        if (Formats::ofType(PathNames::fileType(list.at(row))) == &flacFormat) {
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
    if (fileList().isEmpty() || isSettling() || !confirmDeletion(m_deleteOriginalsButton.isOn())) {
        return;
    }
    const Format *target = targets().value(m_outputFormatMatrix.selectedIndex());
    if (!target) {
        return;
    }
    if (const auto plan = planOutputs(m_sourceDecodeButton, target->extension())) {
        queueWhenSettled(*plan, *target, {}, m_deleteOriginalsButton,
                         [this, plan](const Originals &originals) { queueJobs(*plan, originals); });
    }
}

void DecodeTab::queueJobs(const OutputPlan &plan, const Originals &originals)
{
    OptionValues options;
    options.set(FlacOptions::throughErrors, m_decodeFlacThroughErrors.isOn());
    options.set(FlacOptions::keepForeignMetadata, m_flacKeepForeignMetadataButton.isOn());
    std::vector<std::shared_ptr<KruvTask>> jobs;
    QStringList withoutJob;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        const Format *format = formatOf(entry.source);
        if (!format || !format->decode) {
            withoutJob.append(entry.source);
            continue;
        }
        jobs.push_back(makeJob(format->decode, entry, options, originals));
    }
    reportWithoutJob(withoutJob, m_outputFormatMatrix.selectedTitle());
    submit(jobs);
}

} // namespace kruv
