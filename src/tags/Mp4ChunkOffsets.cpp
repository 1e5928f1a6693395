// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/Mp4ChunkOffsets.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace kruv {

namespace {

constexpr quint64 largestShortOffset = std::numeric_limits<quint32>::max();
/// Version, flags and the number of entries.
constexpr qint64 tableHeader = 8;

quint32 number32(const QByteArray &bytes, qint64 position)
{
    if (position < 0 || position > bytes.size() - 4) {
        throw Mp4Error("atom too short");
    }
    return qFromBigEndian<quint32>(bytes.constData() + position);
}

quint64 number64(const QByteArray &bytes, qint64 position)
{
    return quint64{number32(bytes, position)} << 32 | number32(bytes, position + 4);
}

/// An atom inside bytes: where its content begins and where it ends.
struct Part
{
    QByteArray name;
    qint64 begin;
    qint64 end;
};

std::vector<Part> partsOf(const QByteArray &bytes, qint64 begin, qint64 end)
{
    constexpr qint64 longestHeader = 16;
    std::vector<Part> parts;
    Mp4AtomHeader header;
    while (begin < end && header.read(bytes.mid(begin, std::min(longestHeader, end - begin)))) {
        if (header.length == 0 || header.length > end - begin) {
            throw Mp4Error("atom longer than the one around it");
        }
        parts.push_back({header.name, begin + header.headerLength, begin + header.length});
        begin += header.length;
    }
    return parts;
}

Part wholeAtom(const QByteArray &bytes)
{
    Mp4AtomHeader header;
    if (!header.read(bytes) || (header.length != 0 && header.length != bytes.size())) {
        throw Mp4Error("atom cut short");
    }
    return {header.name, header.headerLength, bytes.size()};
}

bool contains(const Mp4Atom &atom, const char *name)
{
    return atom.name == name || std::any_of(atom.children.begin(), atom.children.end(),
                                            [name](const Mp4Atom &child) { return contains(child, name); });
}

/// Version, flags, track, then as many entries as are counted: time and place of a fragment, both 32 or 64
/// bits wide, and the numbers of its track fragment, run and sample, each 1 to 4 bytes wide.
void moveEntries(QByteArray &bytes, const Part &table, const MoveOffset &move)
{
    constexpr qint64 header = 16;
    const QByteArray content = bytes.mid(table.begin, table.end - table.begin);
    const bool wide = (number32(content, 0) >> 24) == 1;
    const quint32 widths = number32(content, 8);
    const qint64 entry = (wide ? 16 : 8) + 3 + (widths & 3U) + (widths >> 2U & 3U) + (widths >> 4U & 3U);
    const qint64 count = number32(content, 12);
    if (count > (content.size() - header) / entry) {
        throw Mp4Error("table cut short");
    }
    for (qint64 index = 0; index < count; ++index) {
        const qint64 place = header + index * entry + (wide ? 8 : 4);
        char *const target = bytes.data() + table.begin + place;
        const quint64 offset = move(wide ? number64(content, place) : number32(content, place));
        if (wide) {
            qToBigEndian<quint64>(offset, target);
        } else if (offset <= largestShortOffset) {
            qToBigEndian<quint32>(static_cast<quint32>(offset), target);
        } else {
            throw Mp4Error("fragment too far for its table");
        }
    }
}

} // namespace

bool isChunkOffsets(const Mp4Atom &atom)
{
    return atom.name == "stco" || atom.name == "co64";
}

std::vector<quint64> chunkOffsets(const Mp4Atom &table)
{
    const QByteArray content = table.content();
    const qint64 width = table.name == "co64" ? 8 : 4;
    const qint64 count = number32(content, 4);
    if (count > (content.size() - tableHeader) / width) {
        throw Mp4Error("chunk table cut short");
    }
    std::vector<quint64> offsets(static_cast<std::size_t>(count));
    for (qint64 index = 0; index < count; ++index) {
        const qint64 place = tableHeader + index * width;
        offsets[static_cast<std::size_t>(index)] =
            width == 8 ? number64(content, place) : number32(content, place);
    }
    return offsets;
}

void setChunkOffsets(Mp4Atom &table, const std::vector<quint64> &offsets)
{
    const bool wide = table.name == "co64" || std::any_of(offsets.begin(), offsets.end(), [](quint64 offset) {
                          return offset > largestShortOffset;
                      });
    if (wide == (table.name == "co64")) {
        char *target = table.bytes.data() + (table.bytes.size() - table.content().size()) + tableHeader;
        for (const quint64 offset : offsets) {
            wide ? qToBigEndian<quint64>(offset, target)
                 : qToBigEndian<quint32>(static_cast<quint32>(offset), target);
            target += wide ? 8 : 4;
        }
        return;
    }
    const QByteArray header = table.content().left(tableHeader);
    const qint64 length = tableHeader + header.size() + static_cast<qint64>(offsets.size()) * 8;
    table.name = "co64";
    table.bytes = QByteArray(length, '\0');
    qToBigEndian<quint32>(static_cast<quint32>(length), table.bytes.data());
    table.bytes.replace(4, 4, table.name);
    table.bytes.replace(8, header.size(), header);
    setChunkOffsets(table, offsets);
}

void checkThatMediaIsInTheFile(Mp4Atom &track)
{
    constexpr quint32 inThisFile = 1;
    const Mp4Atom *references = track.find({"mdia", "minf", "dinf", "dref"});
    if (references == nullptr) {
        return;
    }
    const QByteArray content = references->content();
    for (const Part &entry : partsOf(content, tableHeader, content.size())) {
        if (((number32(content, entry.begin)) & inThisFile) == 0) {
            throw Mp4Error("media in another file");
        }
    }
}

void checkForOtherReferences(Mp4Atom &moov)
{
    for (const char *name : {"cmov", "saio", "iloc"}) {
        if (contains(moov, name)) {
            throw Mp4Error("references that aren't known here");
        }
    }
}

bool moveFragmentBases(QByteArray &moof, const MoveOffset &move)
{
    constexpr quint32 baseOffsetPresent = 1;
    constexpr qint64 basePosition = 8; // after version, flags and track
    bool found = false;
    const Part whole = wholeAtom(moof);
    for (const Part &fragment : partsOf(moof, whole.begin, whole.end)) {
        if (fragment.name != "traf") {
            continue;
        }
        for (const Part &header : partsOf(moof, fragment.begin, fragment.end)) {
            const bool isHeader = header.name == "tfhd";
            if (isHeader && (number32(moof, header.begin) & baseOffsetPresent) != 0) {
                const qint64 place = header.begin + basePosition;
                if (place + 8 > header.end) {
                    throw Mp4Error("fragment header cut short");
                }
                qToBigEndian<quint64>(move(number64(moof, place)), moof.data() + place);
                found = true;
            }
        }
    }
    return found;
}

bool moveRandomAccess(QByteArray &mfra, const MoveOffset &move)
{
    bool found = false;
    const Part whole = wholeAtom(mfra);
    for (const Part &table : partsOf(mfra, whole.begin, whole.end)) {
        if (table.name == "tfra") {
            moveEntries(mfra, table, move);
            found = true;
        }
    }
    return found;
}

} // namespace kruv
