// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/InputStream.h"
#include "common/MemorySink.h"
#include "common/ToolError.h"
#include "shorten/Decoder.h"
#include "shorten/WavEncoder.h"

#include <cstdlib>

/// Whatever the WAV reader and the encoder accept must come back byte for byte.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::vector<std::uint8_t> original(data, data + size);
    kruv::tools::InputStream input(original, "input");
    kruv::tools::MemorySink coded;
    try {
        kruv::shorten::encodeWav(input, coded);
    } catch (const kruv::tools::ToolError &) {
        return 0;
    }
    kruv::tools::InputStream codedInput(coded.take(), "coded");
    kruv::tools::MemorySink decoded;
    kruv::shorten::Decoder(codedInput, decoded).run();
    if (decoded.bytes() != original) {
        std::abort();
    }
    return 0;
}
