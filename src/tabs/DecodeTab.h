// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/ConversionTab.h"

#include <memory>

namespace kruv {

/// The decode tab: every listed file becomes one job that makes WAV or AIFF of it.
class DecodeTab : public ConversionTab
{
    Q_OBJECT
public:
    explicit DecodeTab(TabHost &host);

    /// What files are decoded to, in the order of the choice.
    static QList<const Format *> targets();
    ChoiceControl &outputFormatMatrix() { return m_outputFormatMatrix; }
    ToggleControl &sourceDecodeButton() { return m_sourceDecodeButton; }
    ToggleControl &deleteOriginalsButton() { return m_deleteOriginalsButton; }
    ToggleControl &decodeFlacThroughErrors() { return m_decodeFlacThroughErrors; }
    ToggleControl &flacKeepForeignMetadataButton() { return m_flacKeepForeignMetadataButton; }
    LabelControl &flacOptionsLabel() { return m_flacOptionsLabel; }

    void clearFiles() override;
    /// Shows or hides the options that only FLAC files have.
    void showFLacOptions(bool show);

protected:
    void filesAdded() override;

private:
    std::optional<Command> command() override;

    ChoiceControl m_outputFormatMatrix;
    ToggleControl m_sourceDecodeButton;
    ToggleControl m_deleteOriginalsButton;
    ToggleControl m_decodeFlacThroughErrors;
    ToggleControl m_flacKeepForeignMetadataButton;
    LabelControl m_flacOptionsLabel;
};

} // namespace kruv
