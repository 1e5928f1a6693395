// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kruv::mac {

/// Decides the arithmetic of a frame. Writers of some years did parts of it in 64 bits; a frame decoded in
/// the wrong way fails its CRC.
struct Arithmetic
{
    bool wideRounding = false;   ///< of the adaptive filters
    bool widePrediction = false; ///< of the nine-tap predictor
    bool operator==(const Arithmetic &) const = default;
};

} // namespace kruv::mac
