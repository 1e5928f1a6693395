// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/Filter.h"

namespace kruv::ttaenc {

#ifndef KRUV_HAVE_SSE41
const Filter *Filter::sse41()
{
    return nullptr;
}
#endif

const Filter &Filter::best()
{
    static const Filter &chosen = sse41() ? *sse41() : portable();
    return chosen;
}

} // namespace kruv::ttaenc
