// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/Decoder.h"

#include "common/ByteSink.h"
#include "common/Crc32.h"
#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/ToolError.h"
#include "ttaenc/Filter.h"
#include "ttaenc/FrameDamage.h"
#include "ttaenc/Pcm.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace kruv::ttaenc {

using tools::ToolError;

namespace {

// Table entries (a second each) beyond any real file; keeps false headers from taking memory.
constexpr std::uint32_t largestFrameCount = 4'000'000;
constexpr std::size_t mostProblems = 20;

} // namespace

Decoder::Decoder(tools::InputStream &input)
    : m_input(input)
    , m_header(input)
    , m_reader(input)
{
    readTable();
    checkTotalSize();
}

void Decoder::readTable()
{
    if (m_header.frameCount() > largestFrameCount) {
        throw ToolError(m_input.name() + ": the TTA header states an impossible length");
    }
    const std::size_t size = std::size_t(m_header.frameCount()) * 4;
    while (m_table.size() < size) {
        const std::size_t start = m_table.size();
        m_table.resize(start + std::min(size - start, std::size_t(1024) * 1024));
        m_input.readExactly(std::span(m_table).subspan(start), "the table of frames");
    }
    std::array<std::uint8_t, 4> checksum = {};
    m_input.readExactly(checksum, "the table of frames");
    if (tools::crc32(m_table) != tools::readLe32(checksum.data())) {
        m_tableUsable = false;
        addProblem("the table of frame sizes is damaged (checksum mismatch)");
    }
}

void Decoder::checkTotalSize()
{
    if (!m_tableUsable || !m_input.size()) {
        return;
    }
    std::uint64_t end = m_input.position();
    for (std::size_t i = 0; i < m_table.size(); i += 4) {
        end += tools::readLe32(&m_table[i]);
        if (end > *m_input.size()) {
            addProblem("the file ends within " + place(static_cast<std::uint32_t>(i / 4)) + " of " +
                       std::to_string(m_header.frameCount()));
            return;
        }
    }
}

std::string Decoder::place(std::uint32_t frame) const
{
    const double seconds =
        static_cast<double>(frame) * m_header.stepsPerFrame() / m_header.format().sampleRate;
    const auto minutes = static_cast<unsigned>(seconds / 60);
    std::array<char, 64> text = {};
    std::snprintf(text.data(), text.size(), "frame %u (at %u:%05.2f)", frame + 1, minutes,
                  seconds - minutes * 60.0);
    return text.data();
}

void Decoder::addProblem(const std::string &text)
{
    if (m_problems.size() < mostProblems) {
        m_problems.push_back(text);
    } else if (m_problems.size() == mostProblems) {
        m_problems.emplace_back("and more");
    }
}

void Decoder::run(tools::ByteSink &output, const std::function<void(std::uint64_t, std::uint64_t)> &progress)
{
    const auto &format = m_header.format();
    const std::uint64_t dataBytes = std::uint64_t(m_header.steps()) * format.bytesPerFrame();
    output.write(format.headerWithSpeakers(dataBytes));
    const std::uint32_t frames = m_header.frameCount();
    for (std::uint32_t frame = 0; frame < frames; ++frame) {
        decodeFrame(frame, output);
        progress(frame + 1, frames);
    }
    if (dataBytes % 2 != 0) {
        output.write(std::array<std::uint8_t, 1>{});
    }
}

void Decoder::decodeFrame(std::uint32_t frame, tools::ByteSink &output)
{
    const auto &format = m_header.format();
    const std::size_t steps = m_header.stepsInFrame(frame);
    m_samples.resize(steps * format.channels);
    m_bytes.resize(steps * format.bytesPerFrame());
    std::optional<std::uint32_t> size;
    if (m_tableUsable) {
        size = tools::readLe32(&m_table[4 * std::size_t(frame)]);
    }
    try {
        m_reader.readFrame(m_samples, format.channels, size);
        Filter::best().decode(m_samples.data(), steps, format.channels, format.bytesPerSample());
        correlate(m_samples, format.channels);
    } catch (const FrameDamage &damage) {
        addProblem(place(frame) + " is damaged: " + damage.what());
        // Without the table nothing says where the next frame begins.
        if (!m_tableUsable) {
            throw ToolError(m_input.name() + ": " + m_problems.back());
        }
        std::fill(m_samples.begin(), m_samples.end(), 0);
    }
    packPcm(m_samples, format.bytesPerSample(), m_bytes);
    output.write(m_bytes);
}

} // namespace kruv::ttaenc
