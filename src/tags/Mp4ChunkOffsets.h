// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/Mp4Atom.h"

#include <functional>
#include <vector>

namespace kruv {

// The atoms that name places in the file. Offsets are in bytes from the start of the file. All throw Mp4Error
// for atoms that can't be what they claim.

/// True for "stco" (32-bit offsets) and "co64" (64-bit offsets).
bool isChunkOffsets(const Mp4Atom &atom);
std::vector<quint64> chunkOffsets(const Mp4Atom &table);
/// A table of 32-bit offsets becomes one of 64-bit offsets when an offset needs it; never the other way.
void setChunkOffsets(Mp4Atom &table, const std::vector<quint64> &offsets);

/// Throws when the track's chunk offsets may be those of another file.
void checkThatMediaIsInTheFile(Mp4Atom &track);
/// Throws when the index is compressed, or holds references of a kind that isn't followed here.
void checkForOtherReferences(Mp4Atom &moov);

using MoveOffset = std::function<quint64(quint64)>;

/// Moves the base offsets in a fragment ("moof"). False when it has none.
bool moveFragmentBases(QByteArray &moof, const MoveOffset &move);
/// Moves the places of fragments in the table for random access ("mfra"). False when it has none.
bool moveRandomAccess(QByteArray &mfra, const MoveOffset &move);

} // namespace kruv
