// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/ConversionTab.h"
#include "tabs/FormatControls.h"

#include <memory>

namespace kruv {

class KruvTaskResults;

/// The encode tab: every listed file becomes one job of the chosen lossless format.
class EncodeTab : public ConversionTab
{
    Q_OBJECT
public:
    explicit EncodeTab(TabHost &host);

    ChoiceControl &outputFormatMatrix() { return m_outputFormatMatrix; }
    ToggleControl &sourceEncodeButton() { return m_sourceEncodeButton; }
    ToggleControl &deleteOriginalsButton() { return m_deleteOriginalsButton; }
    ToggleControl &generateMD5Button() const;
    NumberControl &flacSlider() const;
    ToggleControl &flacLaxButton() const;
    ToggleControl &flacVerifyButton() const;
    ToggleControl &flacKeepForeignMetadataButton() const;
    ToggleControl &generateFFPButton() const;
    NumberControl &apeSlider() const;
    ChoiceControl &wavepackFormatMatrix() const;

    /// In the order of the choice.
    const QList<const Format *> &formats() const { return m_formats; }
    /// Null where none is chosen.
    const Format *chosenFormat() const { return m_formats.value(m_outputFormatMatrix.selectedIndex()); }
    const FormatControls &formatControls() const { return m_controls; }

    void displayRelevantOptions() override;

private:
    std::optional<Command> command() override;
    bool wants(const FormatOption &option) const;
    void addLists(OutputPlan &plan) override;

    const QList<const Format *> m_formats;
    ChoiceControl m_outputFormatMatrix;
    FormatControls m_controls;
    ToggleControl m_sourceEncodeButton;
    ToggleControl m_deleteOriginalsButton;
};

} // namespace kruv
