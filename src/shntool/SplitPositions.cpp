// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SplitPositions.h"

#include "SplitPoints.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sstream>

namespace kruv::SplitPositions {

namespace {

std::optional<std::vector<std::int64_t>> inFrames(const QByteArray &text, const adapters::PcmLayout &layout)
{
    const std::string plain = adapters::plainSplitPoints(text.toStdString());
    const auto points = adapters::splitPointsInBytes(plain, layout);
    if (!points) {
        return std::nullopt;
    }
    std::vector<std::int64_t> positions;
    std::istringstream lines(*points);
    for (std::int64_t bytes = 0; lines >> bytes;) {
        if (bytes % layout.frameSize != 0) {
            return std::nullopt;
        }
        if (bytes > 0) {
            positions.push_back(bytes / layout.frameSize);
        }
    }
    return positions;
}

} // namespace

bool fit(const std::vector<std::int64_t> &cuts, const QByteArray &text, const AudioStreamFormat &format)
{
    constexpr std::int64_t sector = 588; // frames, of a CD
    const adapters::PcmLayout layout{format.sampleRate, format.channels * format.sampleWidth() / 8};
    const auto wanted = inFrames(text, layout);
    // On a CD the tool rounds milliseconds to sectors.
    const auto isAt = [&layout](std::int64_t cut, std::int64_t point) {
        return cut == point ||
               (layout.isCdLike() && cut % sector == 0 && std::abs(cut - point) <= sector / 2 + 1);
    };
    return !wanted || std::ranges::equal(cuts, *wanted, isAt);
}

} // namespace kruv::SplitPositions
