// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/EncodeTab.h"

#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "checksums/CreateFFPTask.h"
#include "checksums/CreateMD5Task.h"
#include "checksums/ListText.h"
#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "formats/flac/FlacOptions.h"
#include "formats/monkeysaudio/MacTool.h"
#include "formats/shorten/ShortenOptions.h"
#include "formats/wavpack/WavpackTool.h"
#include "tasks/KruvTaskQueue.h"

#include <algorithm>
#include <vector>

namespace kruv {

EncodeTab::EncodeTab(TabHost &host)
    : ConversionTab(QStringLiteral("encode"), host)
    , m_formats(Formats::made(false))
    , m_outputFormatMatrix(FormatControls::choicesOf(m_formats), 2)
    , m_controls(m_formats, host.preferences())
{
    m_outputFormatMatrix.tieTo(host.preferences(), QStringLiteral("encodeOutputFormat"));
    m_sourceEncodeButton.tieTo(host.preferences(), QStringLiteral("encodeToSourceDirectory"));
    connect(&m_outputFormatMatrix, &Control::changed, this, &EncodeTab::displayRelevantOptions);
    EncodeTab::displayRelevantOptions();
}

ToggleControl &EncodeTab::generateMD5Button() const
{
    return m_controls.toggle(ShortenOptions::md5);
}

NumberControl &EncodeTab::flacSlider() const
{
    return m_controls.number(FlacOptions::level);
}

ToggleControl &EncodeTab::flacLaxButton() const
{
    return m_controls.toggle(FlacOptions::lax);
}

ToggleControl &EncodeTab::flacVerifyButton() const
{
    return m_controls.toggle(FlacOptions::verify);
}

ToggleControl &EncodeTab::flacKeepForeignMetadataButton() const
{
    return m_controls.toggle(FlacOptions::keepForeignMetadata);
}

ToggleControl &EncodeTab::generateFFPButton() const
{
    return m_controls.toggle(FlacOptions::fingerprints);
}

NumberControl &EncodeTab::apeSlider() const
{
    return m_controls.number(MacTool::level);
}

ChoiceControl &EncodeTab::wavepackFormatMatrix() const
{
    return m_controls.choice(WavpackTool::mode);
}

void EncodeTab::displayRelevantOptions()
{
    for (const Format *format : m_formats) {
        for (const FormatOption *option : format->options) {
            m_controls.control(*option).setEnabled(m_controls.isRelevant(*option, chosenFormat()));
        }
    }
}

void EncodeTab::executeCommand()
{
    const Format *format = chosenFormat();
    if (fileList().isEmpty() || isSettling() || !format || !mayEncodeLossy() ||
        !confirmDeletion(m_deleteOriginalsButton.isOn())) {
        return;
    }
    if (const auto plan = planOutputs(m_sourceEncodeButton, format->extension())) {
        const OptionValues options = m_controls.values(*format);
        queueWhenSettled(*plan, *format, options, m_deleteOriginalsButton,
                         [this, format, plan, options](const Originals &originals) {
                             queueJobs(*format, *plan, options, originals);
                         });
    }
}

bool EncodeTab::mayEncodeLossy()
{
    QStringList lossy = fileNames();
    lossy.removeIf([](const QString &file) {
        const Format *format = Formats::identify(file);
        return !format || !format->isLossy();
    });
    return lossy.isEmpty() || host().userInterface().askAboutLossy(lossy);
}

bool EncodeTab::wants(const FormatOption &option) const
{
    const Format *format = chosenFormat();
    return format && std::ranges::count(format->options, &option) > 0 && m_controls.toggle(option).isOn();
}

void EncodeTab::addLists(OutputPlan &plan)
{
    const Preferences &preferences = host().preferences();
    const auto add = [&](const QString &folder, const QString &name, const QString &extension,
                         const QString &about) {
        plan.addList({ListText::pathIn(folder, preferences, name, extension), extension, about});
    };
    if (wants(ShortenOptions::md5)) {
        add(plan.entries().front().folder, QStringLiteral("md5sum"), QStringLiteral("md5"), {});
    }
    if (wants(FlacOptions::fingerprints)) {
        for (const QString &folder : plan.folders()) {
            add(folder, QStringLiteral("fingerprint"), preferences.string(QStringLiteral("ffpExtension")),
                folder);
        }
    }
}

std::shared_ptr<KruvTask> EncodeTab::listAfter(const OutputPlan &plan)
{
    if (plan.lists().empty()) {
        return nullptr;
    }
    if (wants(ShortenOptions::md5)) {
        return std::make_shared<CreateMD5Task>(&host().taskQueue(), plan.outputs(),
                                               plan.lists().front().path);
    }
    QList<CreateFFPTask::List> lists;
    for (const OutputPlan::List &list : plan.lists()) {
        if (const QStringList files = plan.outputsFor(list); !files.isEmpty()) {
            lists.append({list.path, files});
        }
    }
    return std::make_shared<CreateFFPTask>(&host().taskQueue(), lists);
}

void EncodeTab::queueJobs(const Format &format, const OutputPlan &plan, const OptionValues &options,
                          const Originals &originals)
{
    if (plan.entries().empty()) {
        return;
    }
    const auto results = std::make_shared<KruvTaskResults>();
    results->setTaskAfterSetDone(listAfter(plan));
    std::vector<std::shared_ptr<KruvTask>> jobs;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        jobs.push_back(makeJob(format.encode, entry, options, originals));
        jobs.back()->setResults(results);
        results->addTaskInSet(*jobs.back());
    }
    submit(jobs);
}

} // namespace kruv
