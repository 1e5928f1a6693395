// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The Monkey's Audio decoder on any bytes: it must end with audio or a MacError, soon and with little memory.

#include "LimitedSink.h"
#include "mac/ApeReader.h"
#include "mac/Decompress.h"
#include "mac/FrameDecoder.h"
#include "mac/MacError.h"

#include <algorithm>

using namespace kruv;

namespace {

/// Frames behind a damaged one are reached only without the stop at the first damage.
void decodeEachFrame(const mac::RandomInput &input)
{
    const mac::ApeReader reader(input);
    const mac::StreamInfo &info = reader.info();
    mac::FrameDecoder decoder(info);
    for (std::uint32_t frame = 0; frame < std::min(info.totalFrames, 8U); ++frame) {
        const std::size_t bytes = std::size_t{info.blocksOfFrame(frame)} * info.blockBytes();
        std::vector<std::uint8_t> pcm(std::min<std::size_t>(bytes, std::size_t{10000} * info.blockBytes()));
        try {
            mac::FrameBytes coded = reader.frameBytes(frame);
            decoder.decode(coded, pcm);
        } catch (const mac::MacError &) {
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const mac::RandomInput input(std::span(data, size));
    mac::TimedProgress silent(false);
    try {
        LimitedSink sink;
        mac::decompress(input, sink, silent);
    } catch (const tools::ToolError &) {
    }
    try {
        decodeEachFrame(input);
    } catch (const mac::MacError &) {
    }
    return 0;
}
