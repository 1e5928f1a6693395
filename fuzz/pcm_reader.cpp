// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/InputStream.h"
#include "common/PcmReader.h"
#include "common/ToolError.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    kruv::tools::InputStream input(std::vector<std::uint8_t>(data, data + size), "input");
    try {
        kruv::tools::PcmReader reader(input);
        std::vector<std::uint8_t> block(7 * reader.format().bytesPerFrame());
        std::size_t total = 0;
        while (const std::size_t got = reader.read(block))
            total += got;
        if (total > size || total % reader.format().bytesPerFrame() != 0)
            __builtin_trap();
    } catch (const kruv::tools::ToolError &) {
        // Saying what is wrong is the right answer to most inputs.
    }
    return 0;
}
