// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "MovieBox.h"

#include "BoxBuilder.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <limits>
#include <string>

namespace kruv::aacplusenc {
namespace {

constexpr std::uint32_t fourGiB = std::numeric_limits<std::uint32_t>::max();

class MovieBoxBuilder
{
public:
    explicit MovieBoxBuilder(const AacTrack &track)
        : m_track(track)
        , m_mediaFrames(std::uint64_t{track.accessUnitSizes.size()} * track.framesPerAccessUnit)
        , m_wideTimes(m_mediaFrames > fourGiB)
    {
    }

    std::vector<std::uint8_t> build()
    {
        m_out.box("moov", [this] {
            movieHeader();
            m_out.box("trak", [this] {
                trackHeader();
                editList();
                media();
            });
            gaplessComment();
        });
        return m_out.data();
    }

private:
    unsigned timeVersion() const { return m_wideTimes ? 1 : 0; }
    void timesUnset() { m_out.zeros(m_wideTimes ? 16 : 8); }
    /// A count of decoded frames in the media's time scale, the rate of the core; rounded up.
    std::uint64_t inMediaTime(std::uint64_t frames) const
    {
        return (frames * m_track.coreSampleRate + m_track.sampleRate - 1) / m_track.sampleRate;
    }
    void time(std::uint64_t frames) { m_out.u32or64(frames, m_wideTimes); }
    void unityMatrix()
    {
        for (const std::uint32_t value : {0x10000U, 0U, 0U, 0U, 0x10000U, 0U, 0U, 0U, 0x40000000U}) {
            m_out.u32(value);
        }
    }

    void movieHeader();
    void trackHeader();
    void editList();
    void media();
    void sampleTable();
    void sampleDescription();
    void elementaryStream();
    void descriptor(unsigned tag, std::size_t size);
    void sampleSizes();
    void chunks();
    void rollGroups();
    void gaplessComment();

    const AacTrack &m_track;
    const std::uint64_t m_mediaFrames;
    const bool m_wideTimes;
    BoxBuilder m_out;
};

void MovieBoxBuilder::movieHeader()
{
    m_out.fullBox("mvhd", timeVersion(), 0, [this] {
        timesUnset();
        m_out.u32(m_track.sampleRate);
        time(m_track.sourceFrames);
        m_out.u32(0x10000); // normal speed
        m_out.u16(0x100);   // full volume
        m_out.zeros(10);
        unityMatrix();
        m_out.zeros(24);
        m_out.u32(2); // next track
    });
}

void MovieBoxBuilder::trackHeader()
{
    constexpr std::uint32_t enabledInMovieAndPreview = 7;
    m_out.fullBox("tkhd", timeVersion(), enabledInMovieAndPreview, [this] {
        timesUnset();
        m_out.u32(1); // track number
        m_out.zeros(4);
        time(m_track.sourceFrames);
        m_out.zeros(12);
        m_out.u16(0x100); // full volume
        m_out.zeros(2);
        unityMatrix();
        m_out.zeros(8); // no picture size
    });
}

void MovieBoxBuilder::editList()
{
    m_out.box("edts", [this] {
        m_out.fullBox("elst", timeVersion(), 0, [this] {
            m_out.u32(1);
            time(m_track.sourceFrames);
            time(inMediaTime(m_track.encoderDelay));
            m_out.u32(0x10000); // normal speed
        });
    });
}

void MovieBoxBuilder::media()
{
    m_out.box("mdia", [this] {
        m_out.fullBox("mdhd", timeVersion(), 0, [this] {
            timesUnset();
            m_out.u32(m_track.coreSampleRate);
            time(inMediaTime(m_mediaFrames));
            m_out.u16(0x55C4); // "und", no language
            m_out.u16(0);
        });
        m_out.fullBox("hdlr", 0, 0, [this] {
            m_out.zeros(4);
            m_out.text("soun");
            m_out.zeros(13); // reserved, and an empty name
        });
        m_out.box("minf", [this] {
            m_out.fullBox("smhd", 0, 0, [this] { m_out.zeros(4); });
            m_out.box("dinf", [this] {
                m_out.fullBox("dref", 0, 0, [this] {
                    m_out.u32(1);
                    m_out.fullBox("url ", 0, 1, [] {}); // the data lie in this file
                });
            });
            m_out.box("stbl", [this] { sampleTable(); });
        });
    });
}

void MovieBoxBuilder::sampleTable()
{
    sampleDescription();
    m_out.fullBox("stts", 0, 0, [this] {
        m_out.u32(1);
        m_out.u32(m_track.accessUnitSizes.size());
        m_out.u32(inMediaTime(m_track.framesPerAccessUnit));
    });
    sampleSizes();
    chunks();
    rollGroups();
}

void MovieBoxBuilder::sampleDescription()
{
    m_out.fullBox("stsd", 0, 0, [this] {
        m_out.u32(1);
        m_out.box("mp4a", [this] {
            m_out.zeros(6);
            m_out.u16(1); // data reference
            m_out.zeros(8);
            m_out.u16(m_track.channels);
            m_out.u16(16); // the field's constant for coded audio
            m_out.zeros(4);
            m_out.u32(std::uint64_t{m_track.coreSampleRate} << 16); // 16.16 fixed point
            elementaryStream();
        });
    });
}

/// ISO/IEC 14496-1: an ES descriptor holds the decoder configuration, that holds the codec's own, and the
/// synchronisation layer's follows.
void MovieBoxBuilder::elementaryStream()
{
    constexpr std::size_t tagAndSize = 5;
    const std::size_t specificSize = m_track.decoderConfig.size();
    const std::size_t configSize = 13 + tagAndSize + specificSize;
    m_out.fullBox("esds", 0, 0, [&] {
        descriptor(0x03, 3 + tagAndSize + configSize + tagAndSize + 1);
        m_out.u16(0); // stream number: a track in a file needs none
        m_out.u8(0);
        descriptor(0x04, configSize);
        m_out.u8(0x40); // MPEG-4 audio
        m_out.u8(0x15); // audio stream
        // Largest decoder buffer: 6144 bits a channel.
        const std::uint32_t bufferBytes = 768 * m_track.channels;
        m_out.u8(bufferBytes >> 16);
        m_out.u16(bufferBytes & 0xFFFF);
        m_out.u32(m_track.bitRate); // the largest: the rate is constant
        m_out.u32(m_track.bitRate);
        descriptor(0x05, specificSize);
        m_out.bytes(m_track.decoderConfig);
        descriptor(0x06, 1);
        m_out.u8(2); // reserved value for use in MP4 files
    });
}

/// A descriptor's tag and its size in the four-byte form that every reader takes.
void MovieBoxBuilder::descriptor(unsigned tag, std::size_t size)
{
    m_out.u8(tag);
    for (unsigned shift : {21U, 14U, 7U}) {
        m_out.u8(static_cast<unsigned>((size >> shift) & 0x7F) | 0x80);
    }
    m_out.u8(size & 0x7F);
}

void MovieBoxBuilder::sampleSizes()
{
    m_out.fullBox("stsz", 0, 0, [this] {
        m_out.u32(0); // sizes differ
        m_out.u32(m_track.accessUnitSizes.size());
        for (const std::uint32_t size : m_track.accessUnitSizes) {
            m_out.u32(size);
        }
    });
}

void MovieBoxBuilder::chunks()
{
    const std::size_t chunkCount = m_track.chunkOffsets.size();
    const std::size_t inLastChunk = m_track.accessUnitSizes.size() % m_track.accessUnitsPerChunk;
    const bool shortLastChunk = inLastChunk != 0 && chunkCount > 1;
    m_out.fullBox("stsc", 0, 0, [&] {
        m_out.u32(shortLastChunk ? 2 : 1);
        m_out.u32(1);
        m_out.u32(chunkCount > 1 ? m_track.accessUnitsPerChunk : m_track.accessUnitSizes.size());
        m_out.u32(1);
        if (shortLastChunk) {
            m_out.u32(chunkCount);
            m_out.u32(inLastChunk);
            m_out.u32(1);
        }
    });
    const bool wide = !m_track.chunkOffsets.empty() && m_track.chunkOffsets.back() > fourGiB;
    m_out.fullBox(wide ? "co64" : "stco", 0, 0, [&] {
        m_out.u32(chunkCount);
        for (const std::uint64_t offset : m_track.chunkOffsets) {
            m_out.u32or64(offset, wide);
        }
    });
}

/// Says that every access unit needs the one before it decoded first, so a player that seeks, or that starts
/// at the edit's begin, primes its decoder.
void MovieBoxBuilder::rollGroups()
{
    m_out.fullBox("sgpd", 1, 0, [this] {
        m_out.text("roll");
        m_out.u32(2); // bytes an entry
        m_out.u32(1);
        m_out.u16(0xFFFF); // one access unit back
    });
    m_out.fullBox("sbgp", 0, 0, [this] {
        m_out.text("roll");
        m_out.u32(1);
        m_out.u32(m_track.accessUnitSizes.size());
        m_out.u32(1);
    });
}

/// Delay, padding and length once more, in media time, as the text that players without edit list support
/// look for.
void MovieBoxBuilder::gaplessComment()
{
    const std::uint64_t delay = inMediaTime(m_track.encoderDelay);
    const std::uint64_t length = inMediaTime(m_track.sourceFrames);
    const std::uint64_t padding =
        inMediaTime(m_mediaFrames) - std::min(inMediaTime(m_mediaFrames), delay + length);
    std::array<char, 160> value{};
    const int size = std::snprintf(value.data(), value.size(),
                                   " 00000000 %08" PRIX64 " %08" PRIX64 " %016" PRIX64
                                   " 00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000",
                                   delay, padding, length);

    m_out.box("udta", [&] {
        m_out.fullBox("meta", 0, 0, [&] {
            m_out.fullBox("hdlr", 0, 0, [this] {
                m_out.zeros(4);
                m_out.text("mdirappl");
                m_out.zeros(9);
            });
            m_out.box("ilst", [&] {
                m_out.box("----", [&] {
                    m_out.fullBox("mean", 0, 0, [this] { m_out.text("com.apple.iTunes"); });
                    m_out.fullBox("name", 0, 0, [this] { m_out.text("iTunSMPB"); });
                    m_out.fullBox("data", 0, 1, [&] {
                        m_out.zeros(4);
                        m_out.text({value.data(), static_cast<std::size_t>(size)});
                    });
                });
            });
        });
    });
}

} // namespace

std::vector<std::uint8_t> movieBox(const AacTrack &track)
{
    return MovieBoxBuilder(track).build();
}

} // namespace kruv::aacplusenc
