// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/ConversionTab.h"
#include "tabs/OutputPlan.h"

#include <memory>

namespace kruv {

class KruvTask;
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
    ToggleControl &generateMD5Button() { return m_generateMD5Button; }
    NumberControl &flacSlider() { return m_flacSlider; }
    ToggleControl &flacLaxButton() { return m_flacLaxButton; }
    ToggleControl &flacVerifyButton() { return m_flacVerifyButton; }
    ToggleControl &flacKeepForeignMetadataButton() { return m_flacKeepForeignMetadataButton; }
    ToggleControl &generateFFPButton() { return m_generateFFPButton; }
    NumberControl &apeSlider() { return m_apeSlider; }
    ChoiceControl &wavepackFormatMatrix() { return m_wavepackFormatMatrix; }

    void displayRelevantOptions() override;
    void executeCommand() override;

    /// The job that makes FLAC of one source: which one, its type decides. Null for TTA.
    std::shared_ptr<KruvTask> encodeFLAC(const QString &fileName, const QString &outputPath,
                                         const std::shared_ptr<KruvTaskResults> &results, bool overwrite);
    std::shared_ptr<KruvTask> encodeSHN(const QString &fileName, const QString &outputPath,
                                        const std::shared_ptr<KruvTaskResults> &results);
    std::shared_ptr<KruvTask> encodeTTA(const QString &fileName, const QString &outputPath);

private:
    struct Command;
    struct FormatRow;
    static const FormatRow formatRows[];

    bool mayWriteOutputs(const QString &format, const OutputPlan &plan, bool &overwrite);
    void addFollowUp(const QString &format, const OutputPlan &plan, KruvTaskResults &results);
    QString md5FileFor(const OutputPlan &plan) const;
    std::shared_ptr<KruvTask> encodeWavpack(const QString &fileName, const QString &outputPath);
    std::shared_ptr<KruvTask> encodeAPE(const QString &fileName, const QString &outputPath);
    void queueJobs(const FormatRow &row, const OutputPlan &plan, bool overwrite);

    ChoiceControl m_outputFormatMatrix;
    ToggleControl m_sourceEncodeButton;
    ToggleControl m_deleteOriginalsButton;
    ToggleControl m_generateMD5Button;
    NumberControl m_flacSlider;
    ToggleControl m_flacLaxButton;
    ToggleControl m_flacVerifyButton;
    ToggleControl m_flacKeepForeignMetadataButton;
    ToggleControl m_generateFFPButton;
    NumberControl m_apeSlider;
    ChoiceControl m_wavepackFormatMatrix;
};

} // namespace kruv
