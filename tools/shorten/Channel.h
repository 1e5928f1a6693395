// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shorten/StreamHeader.h"

#include <cstdint>
#include <vector>

namespace kruv::shorten {

/// What encoder and decoder keep for each channel from block to block: the last samples and the last blocks'
/// means.
class Channel
{
public:
    /// startMean is the sample type's centre.
    Channel(const StreamHeader &header, std::int32_t startMean);

    /// Room for count samples of the present block. samples()[-1], [-2] ... are those before it, as far back
    /// as the header's historyLength(). All are kept before the left shift of the output.
    void setBlockSize(std::uint32_t count);
    std::int32_t *samples() { return m_samples.data() + m_historyLength; }
    const std::int32_t *samples() const { return m_samples.data() + m_historyLength; }

    /// The value that DIFF0 and linear prediction take as zero in this block.
    std::int32_t offset(std::uint32_t shift) const;
    /// Call when the block's count samples are in place: the mean and the history move on.
    void finishBlock(std::uint32_t count, std::uint32_t shift);

private:
    void rememberMean(std::uint32_t count, std::uint32_t shift);

    bool m_laterVersion; ///< from version 2 on means are rounded and follow the bit shift
    std::uint32_t m_historyLength;
    std::uint32_t m_meanBlocks;
    std::vector<std::int32_t> m_samples;
    std::vector<std::int32_t> m_means;
    std::size_t m_oldestMean = 0;
    std::int64_t m_sumOfMeans = 0;
};

} // namespace kruv::shorten
