// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/EncodeTab.h"

#include "base/InParallel.h"
#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "checksums/ListText.h"
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
    keepFoldersButton().tieTo(host.preferences(), QStringLiteral("encodeKeepFolders"));
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
    const ConversionOrder order{.target = format, .options = m_controls.values(*format)};
    if (const auto plan = planOutputs(m_sourceEncodeButton, order)) {
        queueWhenSettled(*plan, order, m_deleteOriginalsButton);
    }
}

bool EncodeTab::mayEncodeLossy()
{
    const QStringList files = fileNames();
    std::vector<const Format *> formats(static_cast<std::size_t>(files.size()));
    inParallel(
        formats.size(), threadsForOneJob(host().taskQueue().maxThreads()), [] { return false; },
        [&](std::size_t index) {
            formats[index] = Formats::identify(files.at(static_cast<qsizetype>(index)));
        });
    QStringList lossy;
    for (std::size_t index = 0; index < formats.size(); ++index) {
        if (formats[index] && formats[index]->isLossy()) {
            lossy.append(files.at(static_cast<qsizetype>(index)));
        }
    }
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

} // namespace kruv
