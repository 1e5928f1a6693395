// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/EncodeCoreAudioSync.h"

#include "audio/AudioError.h"
#include "audio/AudioFiles.h"
#include "audio/ExtAudioFileReader.h"
#include "audio/ExtAudioFileWriter.h"
#include "base/FileStamp.h"
#include "tasks/KruvTask.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>
#include <utility>
#include <vector>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(encodeLog, "kruv.audio", QtWarningMsg)

constexpr std::size_t bufferBytes = 32768;

/// Speakers of four to six channels, as WAV names and orders them: left, right, then centre and LFE where
/// there are, then the surrounds. 0 for other counts: the codec's own layout stays.
std::uint32_t surroundLayout(std::uint32_t channels)
{
    switch (channels) {
    case 4:
        return 51;
    case 5:
        return 55;
    case 6:
        return 63;
    default:
        return 0;
    }
}

} // namespace

EncodeCoreAudioSync::EncodeCoreAudioSync(KruvTask &task, QString fileName, QString outFile,
                                         FormatType formatType, FileType fileType)
    : m_task(task)
    , m_fileName(std::move(fileName))
    , m_outFile(std::move(outFile))
    , m_formatType(formatType)
    , m_fileType(fileType)
{
}

QString EncodeCoreAudioSync::formatStringValue() const
{
    switch (m_formatType) {
    case FormatType::Aac:
        return QStringLiteral("AAC");
    case FormatType::AppleLossless:
        return QStringLiteral("Apple Lossless");
    default:
        return m_fileType == FileType::Aiff ? QStringLiteral("AIFF") : QStringLiteral("WAV");
    }
}

bool EncodeCoreAudioSync::doEncodeCall()
{
    try {
        convert();
        return !m_task.cancelled();
    } catch (const std::exception &failure) {
        const QString reason = QString::fromUtf8(failure.what());
        qCInfo(encodeLog, "Exception %s", qUtf8Printable(reason));
        if (m_created && !m_task.cancelled() && QFileInfo(m_outFile).isFile()) {
            QFile::remove(m_outFile); // half a file that looks whole
        }
        m_task.setError(!m_task.cancelled() || m_task.error());
        m_task.results()->setResults(
            tr("Error encoding %1 to %2:\n%3").arg(m_fileName, formatStringValue(), reason), m_task);
        return false;
    }
}

void EncodeCoreAudioSync::convert()
{
    m_created = false;
    const auto input = AudioFiles::open(m_fileName);
    if (FileStamp::isSameFile(m_fileName, m_outFile)) {
        throw AudioError(QStringLiteral("ExtAudioFileCreateWithURL failed prm?"),
                         tr("The output would be written over the file that it is made from."));
    }
    const AudioStreamFormat format = input->dataFormat();
    const AudioStreamFormat client = format.clientFormat();
    const auto output = AudioFiles::create(
        m_outFile, m_fileType, format.outputFormat(m_formatType, m_fileType), input->lengthInFrames());
    m_created = true;
    input->setClientFormat(client);
    output->setClientFormat(client);
    if (m_formatType == FormatType::Aac) {
        output->setAacSettings({m_bitrate, m_quality, m_mode});
    }
    const std::uint32_t layout = surroundLayout(format.channels);
    if (m_formatType != FormatType::LinearPcm && layout != 0 && !output->setChannelLayout(layout)) {
        qCInfo(encodeLog, "AudioConverterSetProperty kAudioConverterOutputChannelLayout failure");
    }
    copyFrames(*input, *output);
    output->finish();
}

void EncodeCoreAudioSync::copyFrames(ExtAudioFileReader &input, ExtAudioFileWriter &output)
{
    const std::uint32_t frameSize = input.dataFormat().clientFormat().bytesPerFrame;
    std::vector<std::uint8_t> buffer(std::max<std::size_t>(bufferBytes / frameSize, 1) * frameSize);
    m_lastShown = 0.0;
    for (std::int64_t pass = 1; !m_task.cancelled(); ++pass) {
        const std::size_t bytes = input.read(buffer);
        if (bytes == 0) {
            break;
        }
        if (input.hasClipped() && m_formatType != FormatType::Aac) {
            throw AudioError(QStringLiteral("ExtAudioFileRead failed"),
                             tr("The floating-point samples go beyond full scale; as integers "
                                "they would be clipped."));
        }
        output.write({buffer.data(), bytes});
        if (input.lengthInFrames() > 0) {
            const std::size_t frames = bytes / frameSize;
            showProgress(static_cast<double>(frames) * static_cast<double>(pass) * 100.0 /
                         static_cast<double>(input.lengthInFrames()));
        }
    }
}

void EncodeCoreAudioSync::showProgress(double percent)
{
    if (percent <= m_lastShown + 1.0) {
        return;
    }
    m_lastShown = percent;
    m_task.setTopTextFieldString(
        tr("Encoding to %1: %2%").arg(formatStringValue(), QString::number(percent, 'f', 6)));
    m_task.setProgressIndicatorValue(percent);
    m_task.publish(&KruvTask::updateStatus);
}

} // namespace kruv
