// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/ExtAudioFileReader.h"
#include "common/InputStream.h"
#include "common/PcmReader.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

namespace kruv {

/// Integer PCM in the files that tools::PcmReader knows, and in files that one of our own coders makes of
/// others.
class PcmFileReader : public ExtAudioFileReader
{
    Q_DECLARE_TR_FUNCTIONS(kruv::AudioFiles)

public:
    /// Throws tools::ToolError for what is no integer PCM of this kind, AudioError where the file can't be
    /// opened.
    explicit PcmFileReader(const QString &path);
    /// From any input; `formatType` is what the file is coded in.
    PcmFileReader(std::unique_ptr<tools::InputStream> input, FormatType formatType);

    std::size_t read(std::span<std::uint8_t> buffer) override;
    Length length() const override;
    QString decoder() const override { return QStringLiteral("kruv"); }

private:
    std::size_t readWidened(std::span<std::uint8_t> buffer);
    std::size_t readNarrow(std::span<std::uint8_t> buffer);
    void checkEnd();

    std::unique_ptr<tools::InputStream> m_input;
    tools::PcmReader m_pcm;
    std::vector<std::uint8_t> m_narrow; // as in the file, where wider samples are asked for
};

} // namespace kruv
