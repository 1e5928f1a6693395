// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "shorten/Channel.h"

#include <algorithm>
#include <numeric>

namespace kruv::shorten {

Channel::Channel(const StreamHeader &header, std::int32_t startMean)
    : m_laterVersion(header.version >= 2)
    , m_historyLength(header.historyLength())
    , m_meanBlocks(header.meanBlocks)
    , m_samples(m_historyLength + header.blockSize)
    , m_means(std::max<std::size_t>(1, header.meanBlocks), startMean)
    , m_sumOfMeans(std::int64_t(startMean) * static_cast<std::int64_t>(m_means.size()))
{
}

void Channel::setBlockSize(std::uint32_t count)
{
    if (m_samples.size() < m_historyLength + count) {
        m_samples.resize(m_historyLength + count);
    }
}

std::int32_t Channel::offset(std::uint32_t shift) const
{
    if (m_meanBlocks == 0) {
        return m_means.front();
    }
    // The division goes toward zero, the shift downward.
    const std::int64_t rounding = m_laterVersion ? m_meanBlocks / 2 : 0;
    const std::int64_t mean = (rounding + m_sumOfMeans) / m_meanBlocks;
    return static_cast<std::int32_t>(m_laterVersion ? mean >> shift : mean);
}

void Channel::finishBlock(std::uint32_t count, std::uint32_t shift)
{
    if (m_meanBlocks > 0) {
        rememberMean(count, shift);
    }
    // A block shorter than the history keeps a part of it; copying upward makes the overlap right.
    const std::int32_t *end = samples() + count;
    std::copy(end - m_historyLength, end, m_samples.begin());
}

void Channel::rememberMean(std::uint32_t count, std::uint32_t shift)
{
    const std::int64_t rounding = m_laterVersion ? count / 2 : 0;
    const std::int64_t sum = std::accumulate(samples(), samples() + count, rounding);
    const std::int64_t mean = sum / static_cast<std::int64_t>(count);
    // Unsigned, because damaged streams shift bits out at the top.
    const auto scaled =
        static_cast<std::int32_t>(static_cast<std::uint32_t>(mean) << (m_laterVersion ? shift : 0));
    m_sumOfMeans += std::int64_t(scaled) - m_means[m_oldestMean];
    m_means[m_oldestMean] = scaled;
    m_oldestMean = (m_oldestMean + 1) % m_means.size();
}

} // namespace kruv::shorten
