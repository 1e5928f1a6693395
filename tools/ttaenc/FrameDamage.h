// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>

namespace kruv::ttaenc {

/// One frame cannot be decoded; the following ones may be whole.
class FrameDamage : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace kruv::ttaenc
