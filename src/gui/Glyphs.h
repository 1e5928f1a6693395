// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QIcon>

namespace kruv {

/// Our own icons, drawn as outlines in the palette's text colour: crisp at every scale, readable on light and
/// dark.
enum class Glyph { Add, DropFiles, General, Metadata, Advanced };

QIcon glyphIcon(Glyph glyph);

} // namespace kruv
