// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "LimitedSink.h"
#include "common/Crc32.h"
#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "ttaenc/Decoder.h"
#include "ttaenc/SkipTags.h"

#include <algorithm>

namespace {

using kruv::tools::readLe32;
using Bytes = std::vector<std::uint8_t>;

void putChecksum(Bytes &bytes, std::size_t begin, std::size_t end)
{
    if (end + 4 <= bytes.size()) {
        kruv::tools::writeLe32(&bytes[end], kruv::tools::crc32(std::span(bytes).subspan(begin, end - begin)));
    }
}

// Almost no mutation would get past the checksums; they are made right, as far as the parts can be found.
void repairChecksums(Bytes &bytes)
{
    constexpr std::size_t tableStart = kruv::ttaenc::StreamHeader::bytes;
    if (bytes.size() < tableStart) {
        return;
    }
    putChecksum(bytes, 0, tableStart - 4);
    const std::uint64_t perFrame =
        std::max<std::uint64_t>(1, std::uint64_t(readLe32(&bytes[10])) * 256 / 245);
    const std::uint64_t frames = (readLe32(&bytes[14]) + perFrame - 1) / perFrame;
    if (frames > bytes.size() / 4) {
        return;
    }
    const std::size_t tableEnd = tableStart + 4 * static_cast<std::size_t>(frames);
    putChecksum(bytes, tableStart, tableEnd);
    std::size_t frameStart = tableEnd + 4;
    for (std::size_t entry = tableStart; entry < tableEnd && entry + 4 <= bytes.size(); entry += 4) {
        const std::uint32_t size = readLe32(&bytes[entry]);
        if (size < 4 || frameStart > bytes.size() || size > bytes.size() - frameStart) {
            return;
        }
        putChecksum(bytes, frameStart, frameStart + size - 4);
        frameStart += size;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Bytes bytes(data, data + size);
    // A file with a tag in front stays as it is, which keeps the paths of wrong checksums in reach.
    const bool repair = !bytes.empty() && bytes.front() == 'T';
    if (repair) {
        repairChecksums(bytes);
    }
    kruv::tools::InputStream input(std::move(bytes), "input");
    LimitedSink output;
    try {
        kruv::ttaenc::skipId3v2(input);
        kruv::ttaenc::Decoder(input).run(output, [](std::uint64_t, std::uint64_t) {});
    } catch (const kruv::tools::ToolError &) {
        // Saying what is wrong is the right answer to most inputs.
    }
    return 0;
}
