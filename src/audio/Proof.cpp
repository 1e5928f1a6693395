// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/Proof.h"

#include "audio/AudioContent.h"
#include "audio/AudioError.h"
#include "audio/AudioFiles.h"
#include "audio/ContentProbe.h"
#include "audio/FrameChain.h"
#include "audio/PcmDigest.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace kruv::Proof {

namespace {

constexpr std::size_t bufferBytes = std::size_t{128} * 1024;
/// Seconds by which lossy audio may be off: what a coder puts before and behind it is not always stated.
constexpr double lengthTolerance = 0.1;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Proof)
};

[[noreturn]] void disprove(const QString &text)
{
    throw std::runtime_error(text.toStdString());
}

bool isSilence(std::span<const std::uint8_t> samples)
{
    return std::ranges::all_of(samples, [](std::uint8_t byte) { return byte == 0; });
}

/// Such are compared as they are; others would have to be made integers first.
bool areFloats(const AudioStreamFormat &one, const AudioStreamFormat &other)
{
    constexpr std::uint32_t bits = 32;
    return one.isFloatingPoint() && other.isFloatingPoint() && one.bitsPerChannel == bits &&
           other.bitsPerChannel == bits;
}

/// Two streams of frames, read side by side.
class Comparison
{
public:
    Comparison(const Claim &claim, const Progress &progress);

    std::optional<Finding> run();

private:
    void requireSameKind() const;
    bool digestDecides() const;
    bool readAll();
    bool compareAll();
    void compare(std::span<const std::uint8_t> source, std::span<const std::uint8_t> output);
    void requireAnnouncedEnds() const;
    void requireAudio() const;
    void passOverSilence();
    std::int64_t leadingSilence(const QStringList &files);
    std::span<const std::uint8_t> readSource(std::size_t most);
    std::span<const std::uint8_t> readOutput(std::size_t most);
    bool tell() const;
    std::int64_t framesIn(std::span<const std::uint8_t> bytes) const
    {
        return static_cast<std::int64_t>(bytes.size() / m_client.bytesPerFrame);
    }

    const Claim &m_claim;
    const Progress &m_progress;
    FrameChain m_source;
    FrameChain m_output;
    AudioStreamFormat m_client;
    std::vector<std::uint8_t> m_sourceFrames;
    std::vector<std::uint8_t> m_outputFrames;
    Digest m_digest = audioMd5();
    std::int64_t m_outputRead = 0; // frames
    bool m_endsAreSilent = true;   // what is on one side alone
    Finding m_finding;
};

Comparison::Comparison(const Claim &claim, const Progress &progress)
    : m_claim(claim)
    , m_progress(progress)
    , m_source(claim.sources, AudioFiles::open)
    , m_output(claim.outputs, AudioFiles::openIndependently)
{
    requireSameKind();
    const bool sourceIsWider = m_source.format().sampleWidth() > m_output.format().sampleWidth();
    m_client = (sourceIsWider ? m_source : m_output).format().clientFormat();
    if (areFloats(m_source.format(), m_output.format())) {
        m_client.formatFlags = AudioStreamFormat::isFloat | AudioStreamFormat::isPacked;
    }
    m_source.setClientFormat(m_client);
    m_output.setClientFormat(m_client);
    m_sourceFrames.resize(bufferBytes / m_client.bytesPerFrame * m_client.bytesPerFrame);
    m_outputFrames.resize(m_sourceFrames.size());
}

void Comparison::requireSameKind() const
{
    const AudioStreamFormat &source = m_source.format();
    const AudioStreamFormat &output = m_output.format();
    if (source.sampleRate != output.sampleRate || source.channels != output.channels) {
        disprove(Text::tr("The output has %1 Hz and %2 channels, its source %3 Hz and %4 channels.")
                     .arg(QString::number(output.sampleRate), QString::number(output.channels),
                          QString::number(source.sampleRate), QString::number(source.channels)));
    }
}

std::optional<Finding> Comparison::run()
{
    passOverSilence();
    if (!(digestDecides() ? readAll() : compareAll())) {
        return std::nullopt;
    }
    requireAudio();
    const QByteArray stated = m_output.statedDigest(); // which held, or reading would have failed
    m_finding.digest = stated.isEmpty() ? m_digest.result() : stated;
    m_finding.decoder = m_output.decoder();
    m_finding.sourceLengths = m_source.lengths();
    m_finding.outputLengths = m_output.lengths();
    m_finding.format = m_source.format();
    if (digestDecides() && m_finding.digest != m_source.statedDigest()) {
        disprove(
            Text::tr("The output holds other audio: its checksum is not the one that its source states."));
    }
    return m_finding;
}

/// FLAC keeps the checksum of its samples; what gives the same one need not be compared with them once more.
bool Comparison::digestDecides() const
{
    const std::uint32_t bits = m_source.format().bitsPerChannel;
    return m_claim.change == Change::None && !m_source.statedDigest().isEmpty() &&
           m_source.statedFrames() > 0 && bits == m_output.format().bitsPerChannel && bits % 8 == 0;
}

bool Comparison::readAll()
{
    while (!readOutput(m_outputFrames.size()).empty()) {
        if (!tell()) {
            return false;
        }
    }
    m_finding.frames = m_source.statedFrames();
    if (m_outputRead != m_finding.frames) {
        disprove(Text::tr("The output has %1 frames, its source %2.")
                     .arg(QString::number(m_outputRead), QString::number(m_finding.frames)));
    }
    return true;
}

bool Comparison::compareAll()
{
    for (;;) {
        const auto source = readSource(m_sourceFrames.size());
        const auto output = readOutput(m_outputFrames.size());
        if (source.empty() && output.empty()) {
            break;
        }
        compare(source, output);
        if (!tell()) {
            return false;
        }
    }
    requireAnnouncedEnds();
    return true;
}

void Comparison::requireAudio() const
{
    if (m_finding.frames == 0) {
        disprove(Text::tr("There is no audio in %1.").arg(m_claim.sources.join(QStringLiteral(", "))));
    }
}

void Comparison::compare(std::span<const std::uint8_t> source, std::span<const std::uint8_t> output)
{
    const std::size_t both = std::min(source.size(), output.size());
    if (both > 0 && std::memcmp(source.data(), output.data(), both) != 0) {
        const auto difference = std::ranges::mismatch(source.first(both), output.first(both));
        const auto same = static_cast<std::size_t>(difference.in1 - source.begin());
        const auto frame = m_finding.frames - framesIn(source) + framesIn(source.first(same));
        disprove(
            Text::tr("The output holds other audio: it differs from its source at frame %1, %2 s after the "
                     "beginning.")
                .arg(QString::number(frame),
                     QString::number(static_cast<double>(frame) / m_client.sampleRate, 'f', 2)));
    }
    const auto onlySource = source.subspan(both);
    const auto onlyOutput = output.subspan(both);
    m_finding.cut += framesIn(onlySource);
    m_finding.added += framesIn(onlyOutput);
    m_endsAreSilent = m_endsAreSilent && isSilence(onlySource) && isSilence(onlyOutput);
}

void Comparison::requireAnnouncedEnds() const
{
    const bool isFilled = m_claim.change == Change::SectorFilled;
    if (m_finding.cut > 0 && (m_claim.change != Change::SilenceCut || !m_endsAreSilent)) {
        disprove(Text::tr("%1 frames of its source are missing in the output.").arg(m_finding.cut));
    }
    if (m_finding.added > 0 && (!isFilled || !m_endsAreSilent)) {
        disprove(Text::tr("The output has %1 frames that its source does not have.").arg(m_finding.added));
    }
    const std::int64_t sector = std::max(m_client.sampleRate / sectorsInASecond, 1U);
    if (isFilled && (m_outputRead % sector != 0 || m_finding.added >= sector)) {
        disprove(
            Text::tr(
                "The output has %1 frames of silence more than its source, which does not fill a sector of a "
                "CD up.")
                .arg(m_finding.added));
    }
}

/// In front of what is left of the source.
void Comparison::passOverSilence()
{
    if (m_claim.change != Change::SilenceCut) {
        return;
    }
    std::int64_t left = leadingSilence(m_claim.sources) - leadingSilence(m_claim.outputs);
    while (left > 0) {
        const auto frames = readSource(static_cast<std::size_t>(left) * m_client.bytesPerFrame);
        m_finding.cut += framesIn(frames);
        left = frames.empty() ? 0 : left - framesIn(frames);
    }
}

/// Frames of zeros that the files begin with.
std::int64_t Comparison::leadingSilence(const QStringList &files)
{
    FrameChain chain(files, AudioFiles::open);
    chain.setClientFormat(m_client);
    std::int64_t silence = 0;
    for (;;) {
        const std::span read(m_sourceFrames.data(), chain.read(m_sourceFrames));
        const auto sound = std::ranges::find_if(read, [](std::uint8_t byte) { return byte != 0; });
        silence += framesIn(read.first(static_cast<std::size_t>(sound - read.begin())));
        if (sound != read.end() || read.empty()) {
            return silence;
        }
    }
}

std::span<const std::uint8_t> Comparison::readSource(std::size_t most)
{
    const std::size_t got =
        m_source.read(std::span(m_sourceFrames).first(std::min(most, m_sourceFrames.size())));
    const std::span<const std::uint8_t> frames(m_sourceFrames.data(), got);
    m_finding.frames += framesIn(frames);
    return frames;
}

std::span<const std::uint8_t> Comparison::readOutput(std::size_t most)
{
    const std::size_t got =
        m_output.read(std::span(m_outputFrames).first(std::min(most, m_outputFrames.size())));
    const std::span<const std::uint8_t> frames(m_outputFrames.data(), got);
    m_outputRead += framesIn(frames);
    if (m_output.statedDigest().isEmpty()) {
        m_digest.add(std::as_bytes(frames));
    }
    return frames;
}

bool Comparison::tell() const
{
    const std::int64_t all = m_output.statedFrames();
    const double percent =
        all > 0 ? 100.0 * static_cast<double>(m_outputRead) / static_cast<double>(all) : 0.0;
    return m_progress(std::min(percent, 100.0));
}

/// Frames, after all of `file` was decoded; nothing where `progress` ended it.
std::optional<std::int64_t> decodedFrames(FrameChain &chain, const Progress &progress)
{
    const std::size_t frameSize = chain.format().clientFormat().bytesPerFrame;
    std::vector<std::uint8_t> buffer(bufferBytes / frameSize * frameSize);
    std::int64_t frames = 0;
    for (std::size_t got = 1; got != 0;) {
        got = chain.read(buffer);
        frames += static_cast<std::int64_t>(got / frameSize);
        const auto all = static_cast<double>(std::max<std::int64_t>(chain.statedFrames(), 1));
        if (!progress(std::min(100.0, 100.0 * static_cast<double>(frames) / all))) {
            return std::nullopt;
        }
    }
    return frames;
}

} // namespace

bool changesSamples(const QString &source)
try {
    const AudioContent content = ContentProbe::of(source);
    return content.kind == AudioContent::Kind::Dsd || content.codec == AudioContent::Codec::FloatPcm ||
           (content.container == AudioContent::Container::WavPack &&
            AudioFiles::open(source, content)->dataFormat().isFloatingPoint());
} catch (const AudioError &) {
    return false; // its job will tell
}

QString obstacle(const QString &source, const QString &output)
{
    const AudioContent content = ContentProbe::of(source);
    switch (content.kind) {
    case AudioContent::Kind::Dsd:
        return Text::tr("its samples were computed anew, so it can't be got back from the output");
    case AudioContent::Kind::Hybrid:
        return Text::tr("it is one half of a hybrid WavPack recording, and the other half is not read here");
    default:
        break;
    }
    const AudioStreamFormat format = AudioFiles::open(source, content)->dataFormat();
    const bool isKept = !output.isEmpty() && areFloats(format, AudioFiles::open(output)->dataFormat());
    return format.isFloatingPoint() && !isKept
               ? Text::tr("its samples are floating-point numbers, which the output does not hold bit by bit")
               : QString();
}

std::optional<Finding> sameAudio(const Claim &claim, const Progress &progress)
{
    return Comparison(claim, progress).run();
}

std::optional<Finding> sameLength(const QString &source, const QString &output, const Progress &progress)
{
    FrameChain made({output}, AudioFiles::openIndependently);
    const auto frames = decodedFrames(made, progress);
    if (!frames) {
        return std::nullopt;
    }
    FrameChain original({source}, AudioFiles::open);
    const auto length = original.statedFrames() > 0 ? std::optional(original.statedFrames())
                                                    : decodedFrames(original, progress);
    if (!length) {
        return std::nullopt;
    }
    const auto wanted = static_cast<double>(*length) / original.format().sampleRate;
    const auto plays = static_cast<double>(*frames) / made.format().sampleRate;
    if (std::abs(wanted - plays) > lengthTolerance) {
        disprove(Text::tr("The output plays for %1 s, its source for %2 s.")
                     .arg(QString::number(plays, 'f', 3), QString::number(wanted, 'f', 3)));
    }
    return Finding{.frames = *length, .decoder = made.decoder()};
}

} // namespace kruv::Proof
