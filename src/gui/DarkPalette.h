// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace kruv {

class ColorScheme;

/// Dark colours for desktops that want them but whose toolkit theme doesn't bring them.
namespace DarkPalette {

/// Puts them on and takes them off again as `scheme` tells, unless the desktop's own theme gives the colours.
void follow(ColorScheme &scheme);

} // namespace DarkPalette
} // namespace kruv
