// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Pump.h"

#include "File.h"
#include "WavHeader.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

using Buffer = std::array<char, 65536>;

ssize_t readSome(int input, Buffer &buffer)
{
    for (;;) {
        const auto count = read(input, buffer.data(), buffer.size());
        if (count >= 0 || errno != EINTR) {
            return count;
        }
    }
}

Passage copy(int input, int output, std::uint64_t before)
{
    Passage passage{before, false};
    Buffer buffer;
    for (;;) {
        const auto count = readSome(input, buffer);
        if (count <= 0) {
            passage.isWhole = count == 0;
            return passage;
        }
        if (!writeAll(output, {buffer.data(), static_cast<std::size_t>(count)})) {
            return passage;
        }
        passage.bytes += static_cast<std::uint64_t>(count);
    }
}

} // namespace

std::string readHeader(int input)
{
    constexpr std::size_t limit = 1 << 20;
    std::string start;
    std::array<char, 4096> buffer;
    while (start.size() < limit && !WavHeader::parse(start)) {
        const auto count = read(input, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0 ||
            (start.empty() &&
             std::string_view(buffer.data(), static_cast<std::size_t>(count)).substr(0, 4) != "RIFF")) {
            start.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
            break;
        }
        start.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return start;
}

Passage passOn(int input, int output)
{
    constexpr std::size_t piece = 1 << 20;
    Passage passage;
    for (;;) {
        const auto count = splice(input, nullptr, output, nullptr, piece, SPLICE_F_MOVE);
        if (count == 0) {
            passage.isWhole = true;
            return passage;
        }
        if (count > 0) {
            passage.bytes += static_cast<std::uint64_t>(count);
        } else if (errno == EINVAL) {
            return copy(input, output, passage.bytes);
        } else if (errno != EINTR) {
            return passage;
        }
    }
}

std::uint64_t drain(int input)
{
    Buffer buffer;
    std::uint64_t bytes = 0;
    for (ssize_t count = 0; (count = readSome(input, buffer)) > 0;) {
        bytes += static_cast<std::uint64_t>(count);
    }
    return bytes;
}

} // namespace kruv::adapters
