// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AdaptiveFilter.h"

namespace kruv::mac {

AdaptiveFilter::AdaptiveFilter(FilterShape shape, bool coarseSteps, FilterKernel kernel)
    : m_kernel(kernel)
    , m_order(shape.order)
    , m_shift(shape.shift)
    , m_coarseSteps(coarseSteps)
{
    reset();
}

void AdaptiveFilter::reset()
{
    m_coefficients.fill(0);
    m_history.fill(0);
    m_steps.fill(0);
    m_position = lead + m_order;
    m_sign = 0;
    m_newestStep = 0;
    m_average = 0;
}

void AdaptiveFilter::moveToStart()
{
    const int kept = lead + m_order;
    std::copy_n(m_history.begin() + m_position - kept, kept, m_history.begin());
    std::copy_n(m_steps.begin() + m_position - kept, kept, m_steps.begin());
    m_position = kept;
}

} // namespace kruv::mac
