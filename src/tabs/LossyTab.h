// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/ConversionTab.h"
#include "tabs/FormatControls.h"

#include <memory>

namespace kruv {

/// The lossy tab: every listed file becomes one job of the chosen lossy format.
class LossyTab : public ConversionTab
{
    Q_OBJECT
public:
    explicit LossyTab(TabHost &host);

    ChoiceControl &outputFormatMatrix() { return m_outputFormatMatrix; }
    ChoiceControl &mp3Matrix() const;
    ChoiceControl &aacMatrix() const;
    ChoiceControl &opusMatrix() const;
    /// MP3 quality at variable rate, 0 (best) to 9.
    NumberControl &slider() const;
    /// AAC quality at variable rate, 0 to 127 (best).
    NumberControl &stepper() const;
    /// The stepper's value as a text that can be typed over.
    TextControl &stepperTextField() { return m_stepperTextField; }
    /// Bit rate in kbit/s.
    ComboControl &comboBox() const;
    /// Frame size in milliseconds.
    ChoiceControl &opusFrameSizeCombo() const;
    LabelControl &bitrateTextField() { return m_bitrateTextField; }
    LabelControl &frameSizeTextField() { return m_frameSizeTextField; }
    LabelControl &zeroNineTextField() { return m_zeroNineTextField; }
    LabelControl &largerTextField() { return m_largerTextField; }
    LabelControl &smallerTextField() { return m_smallerTextField; }
    LabelControl &zeroTo127() { return m_zeroTo127; }
    /// What to install where the chosen format's encoder is missing; hidden where it is there.
    LabelControl &missingToolText() { return m_missingToolText; }
    ToggleControl &sourceEncodeButton() { return m_sourceEncodeButton; }
    ToggleControl &deleteOriginalsButton() { return m_deleteOriginalsButton; }

    /// In the order of the choice.
    const QList<const Format *> &formats() const { return m_formats; }
    /// Null where none is chosen.
    const Format *chosenFormat() const { return m_formats.value(m_outputFormatMatrix.selectedIndex()); }
    const FormatControls &formatControls() const { return m_controls; }

    int sliderLevel() const { return slider().value(); }
    int stepperLevel() const { return stepper().value(); }
    int comboLevel() const;
    double opusFrameSizeLevel() const;

    void displayRelevantOptions() override;

private:
    std::optional<Command> command() override;
    void connectControls();
    void controlTextDidChange();
    void stepperAction();
    void showMissingTool();

    const QList<const Format *> m_formats;
    ChoiceControl m_outputFormatMatrix;
    FormatControls m_controls;
    TextControl m_stepperTextField;
    LabelControl m_bitrateTextField;
    LabelControl m_frameSizeTextField;
    LabelControl m_zeroNineTextField;
    LabelControl m_largerTextField;
    LabelControl m_smallerTextField;
    LabelControl m_zeroTo127;
    LabelControl m_missingToolText;
    ToggleControl m_sourceEncodeButton;
    ToggleControl m_deleteOriginalsButton;
};

} // namespace kruv
