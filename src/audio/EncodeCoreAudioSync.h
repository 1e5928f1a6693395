// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioStreamFormat.h"

#include <QCoreApplication>
#include <QString>

#include <cstdint>

namespace kruv {

class ExtAudioFileReader;
class ExtAudioFileWriter;
class KruvTask;

/// One conversion of an audio file, in this process and on the caller's thread: anything readable to Apple
/// Lossless, AAC, WAV or AIFF. Reports through the job that owns it and stops between two buffers when that
/// job is cancelled.
class EncodeCoreAudioSync
{
    Q_DECLARE_TR_FUNCTIONS(kruv::EncodeCoreAudioSync)
public:
    /// `task` must outlive the conversion. An existing `outFile` is erased; one that is the input is refused.
    EncodeCoreAudioSync(KruvTask &task, QString fileName, QString outFile, FormatType formatType,
                        FileType fileType);

    /// AAC bits per second; 0 leaves the encoder's default.
    void setBitrate(std::uint32_t bitrate) { m_bitrate = bitrate; }
    /// AAC quality of variable bit rates, 1 to 127; 0 leaves the default.
    void setQuality(std::uint32_t quality) { m_quality = quality; }
    /// AAC bit-rate format: 0 constant, 1 average, 2 constrained variable, 3 variable.
    void setMode(std::uint32_t mode) { m_mode = mode; }

    /// Converts; blocks. True when the output is complete. A failure marks the job failed, replaces its
    /// results by the reason and leaves no output; a cancelled job keeps what was written. Never throws.
    bool doEncodeCall();

private:
    void convert();
    void copyFrames(ExtAudioFileReader &input, ExtAudioFileWriter &output);
    void showProgress(double percent);
    QString formatStringValue() const;

    KruvTask &m_task;
    const QString m_fileName;
    const QString m_outFile;
    const FormatType m_formatType;
    const FileType m_fileType;
    std::uint32_t m_bitrate = 0;
    std::uint32_t m_quality = 0;
    std::uint32_t m_mode = 0;
    double m_lastShown = 0.0; // percent
    bool m_created = false;   // the output is ours from here on
};

} // namespace kruv
