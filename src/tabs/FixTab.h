// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/FixTask.h"
#include "tabs/ConversionTab.h"

namespace kruv {

/// The fix tab: moves the audio of the listed tracks so that each but the last ends on a CD sector boundary,
/// all in one job.
class FixTab : public ConversionTab
{
    Q_OBJECT
public:
    explicit FixTab(TabHost &host);

    /// What fixed files can be, in the order of the choice.
    static QList<const Format *> targets();
    ChoiceControl &outputFormatMatrix() { return m_outputFormatMatrix; }
    NumberControl &flacLevelSlider() { return m_flacLevelSlider; }
    ChoiceControl &shnMd5Option() { return m_shnMd5Option; }
    ToggleControl &flacFingerprintButton() { return m_flacFingerprintButton; }
    LabelControl &md5Label() { return m_md5Label; }
    ToggleControl &deleteOriginalsButton() { return m_deleteOriginalsButton; }

    void displayRelevantOptions() override;
    void executeCommand() override;

private:
    /// Null where none is chosen.
    const Format *target() const;
    FixTask::ListKind list() const;
    struct Originals
    {
        bool deletes = false;
        LossQuestion::Answer answer = {};
    };
    void start(const FixTask::Request &request, FileCommit::Existing existing, const Originals &originals);

    ChoiceControl m_outputFormatMatrix;
    NumberControl m_flacLevelSlider;
    ChoiceControl m_shnMd5Option;
    ToggleControl m_flacFingerprintButton;
    LabelControl m_md5Label;
    ToggleControl m_deleteOriginalsButton;
};

} // namespace kruv
