// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/ExtAudioFileReader.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace kruv {

/// The audio of several files of one rate and number of channels as one stream of frames. Each file is open
/// only while it is read. Every failure is a std::runtime_error that names the file.
class FrameChain
{
public:
    using Opener = std::unique_ptr<ExtAudioFileReader> (*)(const QString &path);
    /// Opens each once for what it states.
    FrameChain(QStringList files, Opener opener);

    /// Rate, channels and the greatest width of all.
    const AudioStreamFormat &format() const { return m_format; }
    /// What the files announce together; 0 where one does not tell.
    std::int64_t statedFrames() const { return m_statedFrames; }
    /// In frames: of the files that were read to their end; what the others announce.
    const std::vector<std::int64_t> &lengths() const { return m_lengths; }
    /// The MD5 of the samples that the only file holds; empty where it holds none, or there are more files.
    QByteArray statedDigest() const { return m_statedDigest; }
    /// Of the file that is read.
    QString decoder() const { return m_decoder; }

    /// Before the first read().
    void setClientFormat(const AudioStreamFormat &format) { m_client = format; }
    /// Fills `buffer`, a multiple of the frame; fewer bytes only behind the last file's end, which is then
    /// known to be sound.
    std::size_t read(std::span<std::uint8_t> buffer);

private:
    std::unique_ptr<ExtAudioFileReader> open(const QString &file) const;
    void describe(const ExtAudioFileReader &reader, const QString &file);
    void openNext();
    std::size_t readOn(std::span<std::uint8_t> buffer);

    const QStringList m_files;
    const Opener m_opener;
    AudioStreamFormat m_format;
    AudioStreamFormat m_client;
    std::int64_t m_statedFrames = 0;
    std::vector<std::int64_t> m_lengths;
    QByteArray m_statedDigest;
    QString m_decoder;
    qsizetype m_next = 0; // the file that is opened next
    std::unique_ptr<ExtAudioFileReader> m_reader;
};

} // namespace kruv
