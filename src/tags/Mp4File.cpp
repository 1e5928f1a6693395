// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/Mp4File.h"

#include "tags/Mp4ChunkOffsets.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace kruv {

namespace {

constexpr qint64 longestHeader = 16;
constexpr qint64 largestAtomInMemory = 1LL << 28;
constexpr std::size_t mostRanges = 1U << 20;

bool isFragmentPart(const QByteArray &name)
{
    return name == "moof" || name == "sidx" || name == "ssix" || name == "styp" || name == "mfra";
}

bool isMedia(const QByteArray &name)
{
    return name == "mdat" || isFragmentPart(name);
}

TagLib::ByteVector toByteVector(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<unsigned int>(bytes.size())};
}

} // namespace

Mp4File::Mp4File(TagLib::IOStream &stream)
    : m_stream(stream)
{
    findRanges();
    const auto isMoov = [](const Range &range) { return range.name == "moov"; };
    const auto moov = std::find_if(m_ranges.begin(), m_ranges.end(), isMoov);
    if (moov == m_ranges.end() || std::count_if(m_ranges.begin(), m_ranges.end(), isMoov) != 1) {
        throw Mp4Error("not one index");
    }
    m_moovIndex = static_cast<std::size_t>(moov - m_ranges.begin());
    m_moov = Mp4Atom::parse(read(moov->start, moov->length));
}

QByteArray Mp4File::read(qint64 start, qint64 length) const
{
    if (length > largestAtomInMemory) {
        throw Mp4Error("atom too large");
    }
    m_stream.seek(start, TagLib::IOStream::Beginning);
    const TagLib::ByteVector bytes = m_stream.readBlock(static_cast<unsigned long>(length));
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

void Mp4File::findRanges()
{
    const qint64 fileLength = m_stream.length();
    for (qint64 position = 0; position < fileLength;) {
        const qint64 rest = fileLength - position;
        Mp4AtomHeader header;
        const bool whole =
            header.read(read(position, std::min(longestHeader, rest))) && header.length <= rest;
        const bool isNamed = whole || header.name == "mdat";
        const bool isOpenEnded = !whole || header.length == 0;
        const qint64 length = isOpenEnded ? rest : header.length;
        m_ranges.push_back(
            {isNamed ? header.name : QByteArray(), position, length, 0, true, isOpenEnded, {}});
        position = m_ranges.back().end();
        if (m_ranges.size() > mostRanges) {
            throw Mp4Error("too many atoms");
        }
    }
}

/// What is dropped and where the index goes. Fragments are found by distances, so that nothing between them
/// goes.
void Mp4File::chooseRanges()
{
    const auto indexOf = [&](auto condition) {
        const auto found = std::find_if(m_ranges.begin(), m_ranges.end(),
                                        [&](const Range &range) { return condition(range.name); });
        return static_cast<std::size_t>(found - m_ranges.begin());
    };
    const std::size_t firstFragmentPart = indexOf(isFragmentPart);
    if (indexOf([](const QByteArray &name) { return name == "sidx"; }) < m_moovIndex) {
        throw Mp4Error("segment index before the index");
    }
    m_moovTarget = std::min(m_moovIndex, indexOf(isMedia));
    for (std::size_t index = 0; index < m_ranges.size(); ++index) {
        Range &range = m_ranges[index];
        range.isKept =
            index != m_moovIndex && (!Mp4Atom::isFreeSpace(range.name) || index > firstFragmentPart);
    }
}

void Mp4File::placeRanges()
{
    qint64 position = 0;
    for (std::size_t index = 0; index < m_ranges.size(); ++index) {
        if (index == m_moovTarget) {
            position += m_moov.size();
        }
        Range &range = m_ranges[index];
        range.newStart = position;
        position += range.isKept ? range.length : 0;
    }
}

/// Where the byte at `offset` goes. What lies beyond the end (of a file cut short) moves with the last atom.
quint64 Mp4File::moved(quint64 offset) const
{
    const auto after =
        std::upper_bound(m_ranges.begin(), m_ranges.end(), offset, [](quint64 value, const Range &range) {
            return value < static_cast<quint64>(range.start);
        });
    const std::size_t index = static_cast<std::size_t>(after - m_ranges.begin()) - 1;
    const Range *range = &m_ranges[index];
    if (!range->isKept && offset == static_cast<quint64>(range->start) && index > 0) {
        range = &m_ranges[index - 1]; // the end of what is before: a chunk without samples
    }
    if (!range->isKept) {
        throw Mp4Error("reference to free space or to the index");
    }
    return offset - static_cast<quint64>(range->start) + static_cast<quint64>(range->newStart);
}

std::vector<Mp4File::ChunkTable> Mp4File::chunkTables()
{
    std::vector<ChunkTable> tables;
    for (Mp4Atom &track : m_moov.children) {
        if (track.name != "trak") {
            continue;
        }
        Mp4Atom *sampleTable = track.find({"mdia", "minf", "stbl"});
        if (sampleTable == nullptr) {
            continue;
        }
        const std::size_t before = tables.size();
        for (Mp4Atom &atom : sampleTable->children) {
            if (isChunkOffsets(atom)) {
                tables.push_back({&atom, chunkOffsets(atom)});
            }
        }
        if (tables.size() > before) {
            checkThatMediaIsInTheFile(track);
        }
    }
    return tables;
}

/// A wider table makes the index longer, which may push another chunk beyond what 32 bits can say.
void Mp4File::moveChunks()
{
    checkForOtherReferences(m_moov);
    std::vector<ChunkTable> tables = chunkTables();
    for (bool settled = false; !settled;) {
        settled = true;
        placeRanges();
        for (ChunkTable &table : tables) {
            std::vector<quint64> offsets(table.offsets.size());
            std::transform(table.offsets.begin(), table.offsets.end(), offsets.begin(),
                           [this](quint64 offset) { return moved(offset); });
            const qint64 sizeBefore = table.atom->size();
            setChunkOffsets(*table.atom, offsets);
            settled = settled && table.atom->size() == sizeBefore;
        }
    }
}

void Mp4File::moveFragments()
{
    for (Range &range : m_ranges) {
        if (range.name == "moof") {
            patchFragment(range);
        } else if (range.name == "mfra") {
            patchRandomAccess(range);
        } else if (range.name == "meta" && read(range.start, range.length).contains("iloc")) {
            throw Mp4Error("items of their own beside the index");
        }
    }
}

void Mp4File::patchFragment(Range &range) const
{
    QByteArray bytes = read(range.start, range.length);
    if (moveFragmentBases(bytes, [this](quint64 offset) { return moved(offset); })) {
        range.patched = bytes;
    }
}

void Mp4File::patchRandomAccess(Range &range) const
{
    QByteArray bytes = read(range.start, range.length);
    if (moveRandomAccess(bytes, [this](quint64 offset) { return moved(offset); })) {
        range.patched = bytes;
    }
}

void Mp4File::optimize()
{
    chooseRanges();
    m_moov.dropFreeSpace();
    moveChunks();
    moveFragments();
    editStream();
}

void Mp4File::storeIndex()
{
    constexpr qint64 headerLength = 8;
    const QByteArray bytes = m_moov.toBytes();
    const Range &old = m_ranges[m_moovIndex];
    const auto start = static_cast<unsigned long>(old.start);
    const bool freeFollows =
        m_moovIndex + 1 < m_ranges.size() && Mp4Atom::isFreeSpace(m_ranges[m_moovIndex + 1].name);
    const qint64 room = old.length + (freeFollows ? m_ranges[m_moovIndex + 1].length : 0);
    const qint64 rest = room - bytes.size();
    if (m_moovIndex + 1 == m_ranges.size() || rest == 0) {
        m_stream.insert(toByteVector(bytes), start, static_cast<unsigned long>(room));
    } else if (rest >= headerLength && rest <= std::numeric_limits<qint32>::max()) {
        QByteArray freeSpace(4, '\0');
        qToBigEndian(static_cast<quint32>(rest), freeSpace.data());
        m_stream.insert(toByteVector(bytes + freeSpace + "free"), start,
                        static_cast<unsigned long>(bytes.size() + headerLength));
    } else {
        const bool isFragmented = std::any_of(m_ranges.begin(), m_ranges.end(),
                                              [](const Range &range) { return isFragmentPart(range.name); });
        if (isFragmented || m_ranges.back().isOpenEnded) {
            throw Mp4Error("no place for the index");
        }
        m_stream.insert("free", start + 4, 4);
        m_stream.insert(toByteVector(bytes), static_cast<unsigned long>(m_stream.length()), 0);
    }
}

/// From the end, so that the places still to be edited stay where they are.
void Mp4File::editStream()
{
    const TagLib::ByteVector moov = toByteVector(m_moov.toBytes());
    for (std::size_t index = m_ranges.size(); index-- > 0;) {
        const Range &range = m_ranges[index];
        const auto start = static_cast<unsigned long>(range.start);
        const auto length = static_cast<unsigned long>(range.length);
        if (!range.isKept) {
            m_stream.removeBlock(start, length);
        } else if (!range.patched.isEmpty()) {
            m_stream.insert(toByteVector(range.patched), start, length);
        }
        if (index == m_moovTarget) {
            m_stream.insert(moov, start, 0);
        }
    }
}

} // namespace kruv
