// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// A short album made from nothing: synthesised AIFF tracks (16 bit, stereo, 44.1 kHz), tagged, with a cover
/// picture.
namespace DemoAlbum {

/// Writes the tracks into `folder` and returns their paths. Throws std::runtime_error when one can't be
/// written.
QStringList make(const QString &folder);

} // namespace DemoAlbum
} // namespace kruv
