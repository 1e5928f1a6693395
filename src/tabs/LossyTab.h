// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/ComboControl.h"
#include "tabs/ConversionTab.h"

#include <memory>

namespace kruv {

class KruvTask;
class OutputPlan;

/// The lossy tab: every listed file becomes one job that makes MP3, AAC, HE-AAC or Opus of it.
class LossyTab : public ConversionTab
{
    Q_OBJECT
public:
    explicit LossyTab(TabHost &host);

    ChoiceControl &outputFormatMatrix() { return m_outputFormatMatrix; }
    ChoiceControl &mp3Matrix() { return m_mp3Matrix; }
    ChoiceControl &aacMatrix() { return m_aacMatrix; }
    ChoiceControl &opusMatrix() { return m_opusMatrix; }
    /// MP3 quality at variable rate, 0 (best) to 9.
    NumberControl &slider() { return m_slider; }
    /// AAC quality at variable rate, 0 to 127 (best).
    NumberControl &stepper() { return m_stepper; }
    /// The stepper's value as a text that can be typed over.
    TextControl &stepperTextField() { return m_stepperTextField; }
    /// Bit rate in kbit/s.
    ComboControl &comboBox() { return m_comboBox; }
    /// Frame size in milliseconds.
    ChoiceControl &opusFrameSizeCombo() { return m_opusFrameSizeCombo; }
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

    int sliderLevel() const { return m_slider.value(); }
    int stepperLevel() const { return m_stepper.value(); }
    int comboLevel() const;
    double opusFrameSizeLevel() const;

    void displayRelevantOptions() override;
    void executeCommand() override;

private:
    using Job = std::shared_ptr<KruvTask>;
    struct FormatRow;
    static const FormatRow formatRows[];

    const FormatRow *chosenFormat() const;
    void tieToPreferences();
    void controlTextDidChange();
    void stepperAction();
    void showBitrate(bool show);
    void showMissingTool();
    bool mayWriteOutputs(const FormatRow &row, const OutputPlan &plan, bool inChosenFolder, bool &overwrite);
    Job makeMp3Job(const QString &fileName, const QString &folder, bool overwrite);
    Job makeAacJob(const QString &fileName, const QString &folder, bool overwrite);
    Job makeHeAacJob(const QString &fileName, const QString &folder, bool overwrite);
    Job makeOpusJob(const QString &fileName, const QString &folder, bool overwrite);
    void queueJobs(const FormatRow &row, const OutputPlan &plan, bool overwrite);

    ChoiceControl m_outputFormatMatrix;
    ChoiceControl m_mp3Matrix;
    ChoiceControl m_aacMatrix;
    ChoiceControl m_opusMatrix;
    NumberControl m_slider;
    NumberControl m_stepper;
    TextControl m_stepperTextField;
    ComboControl m_comboBox;
    ChoiceControl m_opusFrameSizeCombo;
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
