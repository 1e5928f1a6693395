// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/FrameChain.h"

#include <QCoreApplication>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace kruv {

namespace {

[[noreturn]] void fail(const char *text, const QString &file, const QString &why = {})
{
    throw std::runtime_error(
        QCoreApplication::translate("kruv::FrameChain", text).arg(file, why).toStdString());
}

/// The last line of an error says why.
QString reasonOf(const std::exception &failure)
{
    return QString::fromUtf8(failure.what()).section(u'\n', -1);
}

} // namespace

FrameChain::FrameChain(QStringList files, Opener opener)
    : m_files(std::move(files))
    , m_opener(opener)
{
    bool allTell = true;
    for (const QString &file : m_files) {
        const auto reader = open(file);
        describe(*reader, file);
        allTell = allTell && reader->lengthInFrames() > 0;
        m_statedFrames += reader->lengthInFrames();
        m_lengths.push_back(reader->lengthInFrames());
        m_statedDigest = m_files.size() == 1 ? reader->statedDigest() : QByteArray();
    }
    m_statedFrames = allTell ? m_statedFrames : 0;
    m_client = m_format.clientFormat();
}

std::unique_ptr<ExtAudioFileReader> FrameChain::open(const QString &file) const
try {
    return m_opener(file);
} catch (const std::exception &failure) {
    fail(QT_TRANSLATE_NOOP("kruv::FrameChain", "%1 can't be decoded: %2"), file, reasonOf(failure));
}

void FrameChain::describe(const ExtAudioFileReader &reader, const QString &file)
{
    const AudioStreamFormat &format = reader.dataFormat();
    if (m_format.channels == 0) {
        m_format = format;
    }
    if (format.sampleRate != m_format.sampleRate || format.channels != m_format.channels) {
        fail(QT_TRANSLATE_NOOP("kruv::FrameChain",
                               "%1 has another sample rate or number of channels than the first file."),
             file);
    }
    if (format.sampleWidth() > m_format.sampleWidth()) {
        m_format.bitsPerChannel = format.bitsPerChannel;
    }
}

std::size_t FrameChain::read(std::span<std::uint8_t> buffer)
{
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        if (!m_reader) {
            if (m_next == m_files.size()) {
                break;
            }
            openNext();
        }
        filled += readOn(buffer.subspan(filled));
        if (filled < buffer.size()) {
            m_reader.reset();
        }
    }
    return filled;
}

void FrameChain::openNext()
{
    m_lengths[static_cast<std::size_t>(m_next)] = 0;
    m_reader = open(m_files[m_next++]);
    m_reader->setClientFormat(m_client);
    m_decoder = m_reader->decoder();
}

std::size_t FrameChain::readOn(std::span<std::uint8_t> buffer)
try {
    const std::size_t got = m_reader->read(buffer);
    m_lengths[static_cast<std::size_t>(m_next) - 1] +=
        static_cast<std::int64_t>(got / m_client.bytesPerFrame);
    return got;
} catch (const std::exception &failure) {
    fail(QT_TRANSLATE_NOOP("kruv::FrameChain", "%1 is damaged: %2"), m_files[m_next - 1], reasonOf(failure));
}

} // namespace kruv
