// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>
#include <tbytevector.h>
#include <tiostream.h>
#include <vector>

namespace kruv {

class StagedFileStream;

/// The chain of metadata blocks in a FLAC file. Offsets in bytes from the file's start.
struct FlacMetadata
{
    long end = 0;       ///< where the audio begins
    long lastBlock = 0; ///< header of the last block
    bool endsWithPadding = false;
};

/// Nothing when the file has no "fLaC" marker (after an ID3v2 tag, where there is one) or ends within the
/// chain.
std::optional<FlacMetadata> findFlacMetadata(TagLib::IOStream &stream);

/// Content of the Vorbis comment block, as it stands in the file; empty without one.
TagLib::ByteVector readFlacComments(TagLib::IOStream &stream);

/// A part of a FLAC file, in bytes from its start.
struct FlacSpan
{
    long offset = 0;
    long length = 0;
};

/// The long parts that one who edits comments and padding leaves as they are, in order: what pictures hold,
/// and last the audio with all behind it. Empty where findFlacMetadata() finds nothing.
std::vector<FlacSpan> findLastingParts(TagLib::IOStream &stream);

/// The library cuts back the padding of short files. This gives the padding at the end of the chain the size
/// that lets the audio begin at `audioOffset` again, where that is possible: so room that someone left for
/// tags stays, and the file need not be written anew.
void restoreFlacPadding(StagedFileStream &stream, long audioOffset);

} // namespace kruv
