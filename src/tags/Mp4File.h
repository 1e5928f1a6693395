// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/Mp4Atom.h"

#include <optional>
#include <tiostream.h>
#include <vector>

namespace kruv {

/// An MP4 file as the row of its top-level atoms, of which only the index (moov) is read into memory. Written
/// anew compactly: the index before the media, no free space, and every place in the file that the index or a
/// fragment names put right. Everything else, the media above all, is carried over byte for byte.
class Mp4File
{
public:
    /// `stream` must live on. Throws Mp4Error when there isn't just one index that can be read.
    explicit Mp4File(TagLib::IOStream &stream);

    /// The index, to be read or changed before it is stored by one of the two below; only one may be called.
    Mp4Atom &moov() { return m_moov; }

    /// Edits the stream into the compact file. Throws Mp4Error, with the stream unchanged, where that could
    /// break the file: references that can't be followed (to free space, to another file), or an index that
    /// would be out of step.
    void optimize();

    /// Edits the stream so that it has the changed index and nothing else moves: where the old one was and
    /// the free space after it, if that will do, else at the end. Throws Mp4Error, with the stream unchanged,
    /// where neither can be.
    void storeIndex();

private:
    /// A top-level atom; the last one may be cut off, or anything else that can't be read.
    struct Range
    {
        QByteArray name;
        qint64 start = 0;
        qint64 length = 0;
        qint64 newStart = 0;
        bool isKept = true;
        /// Its size isn't written in it, or not rightly.
        bool isOpenEnded = false;
        /// Bytes in place of those there are, of the same length.
        QByteArray patched;
        qint64 end() const { return start + length; }
    };
    struct ChunkTable
    {
        Mp4Atom *atom;
        std::vector<quint64> offsets;
    };

    QByteArray read(qint64 start, qint64 length) const;
    void findRanges();
    void chooseRanges();
    void placeRanges();
    quint64 moved(quint64 offset) const;
    std::vector<ChunkTable> chunkTables();
    void moveChunks();
    void moveFragments();
    void patchFragment(Range &range) const;
    void patchRandomAccess(Range &range) const;
    void editStream();

    TagLib::IOStream &m_stream;
    std::vector<Range> m_ranges;
    std::size_t m_moovIndex = 0;
    /// The index goes before this range.
    std::size_t m_moovTarget = 0;
    Mp4Atom m_moov;
};

} // namespace kruv
