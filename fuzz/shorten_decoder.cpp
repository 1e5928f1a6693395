// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "LimitedSink.h"
#include "common/InputStream.h"
#include "shorten/Decoder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    kruv::tools::InputStream input(std::vector<std::uint8_t>(data, data + size), "input");
    LimitedSink output;
    try {
        kruv::shorten::Decoder(input, output).run();
    } catch (const kruv::tools::ToolError &) {
        // Saying what is wrong is the right answer to most inputs.
    }
    return 0;
}
