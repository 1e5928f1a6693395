// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AdaptiveFilter.h"
#include "Arithmetic.h"
#include "Level.h"
#include "Predictor.h"
#include "StreamInfo.h"

#include <vector>

namespace kruv::mac {

/// From samples to residuals and back, for one channel of a frame: the predictor, then the level's filters.
class ChannelCoder
{
public:
    ChannelCoder(std::span<const FilterShape> filters, uint16_t version, FilterKernel kernel)
    {
        m_filters.reserve(filters.size());
        for (const FilterShape &shape : filters) {
            m_filters.emplace_back(shape, version < versionDescriptor, kernel);
        }
    }

    void reset()
    {
        m_predictor.reset();
        for (AdaptiveFilter &filter : m_filters) {
            filter.reset();
        }
    }

    int32_t encode(int32_t value, int32_t other, Arithmetic arithmetic = {})
    {
        int32_t residual = m_predictor.encode(value, other, arithmetic.widePrediction);
        for (AdaptiveFilter &filter : m_filters) {
            residual = filter.encode(residual, arithmetic.wideRounding);
        }
        return residual;
    }

    int32_t decode(int32_t residual, int32_t other, Arithmetic arithmetic)
    {
        for (auto filter = m_filters.rbegin(); filter != m_filters.rend(); ++filter) {
            residual = filter->decode(residual, arithmetic.wideRounding);
        }
        return m_predictor.decode(residual, other, arithmetic.widePrediction);
    }

private:
    Predictor m_predictor;
    std::vector<AdaptiveFilter> m_filters;
};

} // namespace kruv::mac
