// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AvHandles.h"
#include "audio/AvSource.h"
#include "audio/ExtAudioFileReader.h"
#include "tasks/DamageNote.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kruv {

/// Looks for the damaged places of a file whose frames have checksums and tell where they belong, as those of
/// FLAC, and that a tool decoded through its errors: wherever no sound frame of it stands in what the tool
/// made. Any thread.
class DamageSearch
{
public:
    /// Nothing where the file can't even be opened as audio, and where `goesOn` ended the search.
    static std::optional<DamageNote> in(const QString &path, const QString &decoded,
                                        const std::function<bool()> &goesOn);

private:
    DamageSearch(const QString &path, const QString &decoded);

    bool run(const std::function<bool()> &goesOn);
    bool nextPacket();
    std::int64_t firstSample() const;
    bool decodePacket();
    bool isInDecoded(std::int64_t first);
    void cover(std::int64_t first);
    DamageNote finished();

    AvSource m_source;
    AvPointer<AVCodecContext> m_decoder;
    AvPointer<AVPacket> m_packet;
    AvPointer<AVFrame> m_frame;
    std::unique_ptr<ExtAudioFileReader> m_decoded;
    std::int64_t m_decodedRead = 0;     // in samples of each channel
    std::vector<std::uint8_t> m_sound;  // of the packet, as m_decoded gives it
    std::vector<std::uint8_t> m_buffer; // of m_decoded
    DamageNote m_note;
    std::int64_t m_covered = 0; // up to there everything is sound or noted
};

} // namespace kruv
