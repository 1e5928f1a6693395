// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/EncodeTab.h"

#include "base/Preferences.h"
#include "checksums/ListText.h"
#include "formats/Formats.h"
#include "formats/flac/FlacOptions.h"
#include "formats/monkeysaudio/MacTool.h"
#include "formats/shorten/ShortenOptions.h"
#include "formats/wavpack/WavpackTool.h"

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
    tieKeepFolders(QStringLiteral("encodeKeepFolders"), m_sourceEncodeButton);
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

std::optional<ConversionTab::Command> EncodeTab::command()
{
    const Format *format = chosenFormat();
    if (!format) {
        return std::nullopt;
    }
    return Command{.order = {.target = format, .options = m_controls.values(*format)},
                   .besideSources = m_sourceEncodeButton,
                   .deletes = m_deleteOriginalsButton};
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
