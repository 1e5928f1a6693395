// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Pump.h"

#include "File.h"
#include "WavHeader.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <span>
#include <unistd.h>

namespace kruv::adapters {

namespace {

using Buffer = std::array<char, 65536>;

bool isReadable(int descriptor)
{
    pollfd entry{descriptor, POLLIN, 0};
    return poll(&entry, 1, 0) != 0;
}

/// Waits for bytes or the end. False where the writer is gone and all that it wrote was read.
bool hasMore(const Inflow &input)
{
    if (input.writer < 0) {
        return true;
    }
    for (;;) {
        std::array<pollfd, 2> entries{pollfd{input.descriptor, POLLIN, 0}, pollfd{input.writer, POLLIN, 0}};
        const auto ready = poll(entries.data(), entries.size(), -1);
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        return ready < 0 || entries[0].revents != 0 || isReadable(input.descriptor);
    }
}

/// As read(), to the end of the inflow.
ssize_t readSome(const Inflow &input, std::span<char> buffer)
{
    while (hasMore(input)) {
        const auto count = read(input.descriptor, buffer.data(), buffer.size());
        if (count >= 0 || errno != EINTR) {
            return count;
        }
    }
    return 0;
}

Passage copy(const Inflow &input, int output, std::uint64_t before)
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

std::string readHeader(Inflow input)
{
    constexpr std::size_t limit = 1 << 20;
    std::string start;
    std::array<char, 4096> buffer;
    while (start.size() < limit && !WavHeader::parse(start)) {
        const auto count = readSome(input, buffer);
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

Passage passOn(Inflow input, int output)
{
    constexpr std::size_t piece = 1 << 20;
    Passage passage;
    for (;;) {
        const auto count =
            hasMore(input) ? splice(input.descriptor, nullptr, output, nullptr, piece, SPLICE_F_MOVE) : 0;
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

std::uint64_t drain(Inflow input)
{
    Buffer buffer;
    std::uint64_t bytes = 0;
    for (ssize_t count = 0; (count = readSome(input, buffer)) > 0;) {
        bytes += static_cast<std::uint64_t>(count);
    }
    return bytes;
}

} // namespace kruv::adapters
