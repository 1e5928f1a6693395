// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/Audio.h"

#include <QByteArray>

/// Files of formats that no encoder here makes, as simple as their decoders take them.
namespace kruv::test {

/// One-bit audio of two channels at 2.8224 MHz; `bits` holds a byte of each channel in turn, the earliest
/// sample in its highest bit.
QByteArray dsfBytes(const QByteArray &bits);
QByteArray dffBytes(const QByteArray &bits);

/// MPEG-4 ALS in MP4: Rice codes without prediction, one value for a thousand that are equal, and a checksum.
/// 16 to 32 bits.
QByteArray alsBytes(const Audio &audio);

/// TAK: audio of one or two channels and 16 or 24 bits that keeps its values for whole quarters of a second,
/// but for the frames behind the last quarter, 1 to 15.
QByteArray takBytes(const Audio &audio);

/// Apple Lossless in MP4 that is not compressed. One or two channels.
QByteArray alacBytes(const Audio &audio);

} // namespace kruv::test
