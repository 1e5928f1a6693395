// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/ExtAudioFileWriter.h"
#include "audio/FileDescriptor.h"

#include <QCoreApplication>

#include <vector>

namespace kruv {

/// Writes integer PCM as WAV (RF64 beyond 4 GiB) or AIFF.
class PcmFileWriter : public ExtAudioFileWriter
{
    Q_DECLARE_TR_FUNCTIONS(kruv::PcmFileWriter)
public:
    PcmFileWriter(const QString &path, FileType fileType, const AudioStreamFormat &format,
                  std::int64_t expectedFrames);

    void setClientFormat(const AudioStreamFormat &format) override;
    void write(std::span<const std::uint8_t> frames) override;
    void finish() override;

private:
    bool fits(std::int64_t frames) const;
    std::vector<std::uint8_t> header() const;
    std::span<const std::uint8_t> inFileOrder(std::span<const std::uint8_t> frames);

    const FileType m_fileType;
    const AudioStreamFormat m_format;
    const bool m_wide;
    FileDescriptor m_file;
    std::int64_t m_frames = 0;
    std::vector<std::uint8_t> m_scratch;
};

} // namespace kruv
