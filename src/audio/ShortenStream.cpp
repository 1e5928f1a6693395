// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ShortenStream.h"

#include "audio/AudioError.h"
#include "audio/FileDescriptor.h"
#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/MemorySink.h"
#include "common/ToolError.h"
#include "common/WavReader.h"
#include "shorten/Decoder.h"

namespace kruv::ShortenStream {

namespace {

class NullSink : public tools::ByteSink
{
public:
    void write(std::span<const std::uint8_t>) override {}
};

} // namespace

std::int64_t statedFrames(const QString &path, std::int64_t start)
{
    constexpr std::size_t enough = std::size_t{64} * 1024; // for the chunks before the audio
    constexpr std::uint32_t firstPlaceholder = 0x7FFFF000; // what writers on a pipe leave
    try {
        tools::InputStream stream(FileDescriptor::openForReading(path).release(), path.toStdString());
        stream.skip(static_cast<std::uint64_t>(start));
        tools::MemorySink decoded;
        shorten::Decoder decoder(stream, decoded);
        while (decoded.bytes().size() < enough && decoder.step()) {
        }
        tools::InputStream wav(decoded.take(), path.toStdString());
        const tools::WavReader reader(wav);
        const std::uint32_t stated = tools::readLe32(&reader.header().back() - 3);
        return stated < firstPlaceholder ? stated / reader.format().bytesPerFrame() : 0;
    } catch (const tools::ToolError &) {
        return 0; // whoever reads the audio will hear of it
    }
}

void checkEnd(const QString &path, std::int64_t start)
{
    try {
        tools::InputStream stream(FileDescriptor::openForReading(path).release(), path.toStdString());
        stream.skip(static_cast<std::uint64_t>(start));
        NullSink nowhere;
        shorten::Decoder(stream, nowhere).run();
    } catch (const tools::ToolError &failure) {
        throw AudioError(QStringLiteral("ExtAudioFileRead failed"), QString::fromUtf8(failure.what()));
    }
}

} // namespace kruv::ShortenStream
