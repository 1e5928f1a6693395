// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/ConversionTab.h"

#include <memory>

namespace kruv {

class KruvTask;

/// The decode tab: every listed file becomes one job that makes WAV or AIFF of it.
class DecodeTab : public ConversionTab
{
    Q_OBJECT
public:
    explicit DecodeTab(TabHost &host);

    ChoiceControl &outputFormatMatrix() { return m_outputFormatMatrix; }
    ToggleControl &sourceDecodeButton() { return m_sourceDecodeButton; }
    ToggleControl &deleteOriginalsButton() { return m_deleteOriginalsButton; }
    ToggleControl &decodeFlacThroughErrors() { return m_decodeFlacThroughErrors; }
    ToggleControl &flacKeepForeignMetadataButton() { return m_flacKeepForeignMetadataButton; }
    LabelControl &flacOptionsLabel() { return m_flacOptionsLabel; }

    void clearFiles() override;
    void executeCommand() override;
    /// Shows or hides the options that only FLAC files have.
    void showFLacOptions(bool show);

    std::shared_ptr<KruvTask> decodeFlac(const QString &fileName, const QString &outputPath,
                                         const QString &format);
    std::shared_ptr<KruvTask> decodeSHN(const QString &fileName, const QString &outputPath,
                                        const QString &format);
    /// By way of shntool. The command takes wvunpack itself.
    std::shared_ptr<KruvTask> decodeWavpack(const QString &fileName, const QString &outputPath,
                                            const QString &format);

protected:
    void filesAdded() override;

private:
    struct SourceRow;
    template <class Job>
    static std::shared_ptr<KruvTask> make(DecodeTab &tab, const QString &fileName, const QString &folder,
                                          const QString &format);
    static const SourceRow sourceRows[];

    std::shared_ptr<KruvTask> shntoolJob(const QString &encoder, const QString &folder,
                                         const QString &fileName);
    std::shared_ptr<KruvTask> jobFor(const QString &fileName, const QString &folder, const QString &format);
    void queueJobs(const QString &chosenFolder, const QString &format);

    ChoiceControl m_outputFormatMatrix;
    ToggleControl m_sourceDecodeButton;
    ToggleControl m_deleteOriginalsButton;
    ToggleControl m_decodeFlacThroughErrors;
    ToggleControl m_flacKeepForeignMetadataButton;
    LabelControl m_flacOptionsLabel;
};

} // namespace kruv
