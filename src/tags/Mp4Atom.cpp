// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/Mp4Atom.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

namespace kruv {

namespace {

constexpr qint64 shortHeader = 8;
constexpr qint64 longHeader = 16;

struct Nesting
{
    const char *parent;
    const char *name;
};

/// The containers that are taken apart. Each only in its place, which bounds the depth.
constexpr std::array containers{
    Nesting{"", "moov"},     Nesting{"moov", "trak"}, Nesting{"trak", "mdia"}, Nesting{"mdia", "minf"},
    Nesting{"minf", "stbl"}, Nesting{"minf", "dinf"}, Nesting{"moov", "udta"}, Nesting{"trak", "udta"},
    Nesting{"udta", "meta"}, Nesting{"meta", "ilst"}, Nesting{"moov", "meta"},
};

bool isContainerName(const QByteArray &parent, const QByteArray &name)
{
    return std::any_of(containers.begin(), containers.end(), [&](const Nesting &nesting) {
        return parent == nesting.parent && name == nesting.name;
    });
}

/// The metadata atom begins with version and flags, but for the QuickTime form of it, which begins with its
/// first child.
qint64 prefixLength(const QByteArray &name, const QByteArray &content)
{
    if (name != "meta") {
        return 0;
    }
    const QByteArray second = content.mid(4, 4);
    const bool quickTime = second == "hdlr" || second == "mhdr" || second == "ilst" || second == "keys";
    return quickTime ? 0 : std::min<qint64>(4, content.size());
}

} // namespace

bool Mp4AtomHeader::read(const QByteArray &bytes)
{
    if (bytes.size() < shortHeader) {
        return false;
    }
    headerLength = shortHeader;
    length = qFromBigEndian<quint32>(bytes.constData());
    name = bytes.mid(4, 4);
    if (length == 1) {
        if (bytes.size() < longHeader) {
            return false;
        }
        headerLength = longHeader;
        length = qFromBigEndian<qint64>(bytes.constData() + shortHeader);
        return length >= headerLength;
    }
    return length == 0 || length >= headerLength;
}

Mp4Atom Mp4Atom::parse(const QByteArray &bytes, const QByteArray &parent)
{
    Mp4AtomHeader header;
    if (!header.read(bytes)) {
        throw Mp4Error("atom without a sound header");
    }
    Mp4Atom atom;
    atom.name = header.name;
    if (!isContainerName(parent, header.name)) {
        atom.bytes = bytes;
        return atom;
    }
    atom.isContainer = true;
    const QByteArray content = bytes.mid(header.headerLength);
    qint64 position = prefixLength(header.name, content);
    atom.bytes = content.left(position);
    while (header.read(content.mid(position, longHeader)) && header.length != 0) {
        if (header.length > content.size() - position) {
            throw Mp4Error("atom longer than the one around it");
        }
        atom.children.push_back(parse(content.mid(position, header.length), atom.name));
        position += header.length;
    }
    atom.tail = content.mid(position);
    if (atom.tail.size() >= shortHeader && atom.name != "udta") {
        throw Mp4Error("atom with unreadable content");
    }
    return atom;
}

Mp4Atom Mp4Atom::container(const QByteArray &name)
{
    Mp4Atom atom;
    atom.name = name;
    atom.isContainer = true;
    return atom;
}

qint64 Mp4Atom::size() const
{
    if (!isContainer) {
        return bytes.size();
    }
    return std::accumulate(children.begin(), children.end(), shortHeader + bytes.size() + tail.size(),
                           [](qint64 sum, const Mp4Atom &child) { return sum + child.size(); });
}

QByteArray Mp4Atom::toBytes() const
{
    if (!isContainer) {
        return bytes;
    }
    const qint64 length = size();
    if (length > std::numeric_limits<qint32>::max()) {
        throw Mp4Error("index too large");
    }
    QByteArray result;
    result.reserve(length);
    result.resize(4);
    qToBigEndian(static_cast<quint32>(length), result.data());
    result += name + bytes;
    for (const Mp4Atom &child : children) {
        result += child.toBytes();
    }
    return result + tail;
}

QByteArray Mp4Atom::content() const
{
    Mp4AtomHeader header;
    return header.read(bytes) ? bytes.mid(header.headerLength) : QByteArray();
}

Mp4Atom *Mp4Atom::find(std::initializer_list<const char *> path)
{
    Mp4Atom *atom = this;
    for (const char *step : path) {
        const auto child = std::find_if(atom->children.begin(), atom->children.end(),
                                        [step](const Mp4Atom &each) { return each.name == step; });
        if (child == atom->children.end()) {
            return nullptr;
        }
        atom = &*child;
    }
    return atom;
}

Mp4Atom &Mp4Atom::add(Mp4Atom child)
{
    return children.emplace_back(std::move(child));
}

void Mp4Atom::dropFreeSpace()
{
    std::erase_if(children, [](const Mp4Atom &child) { return isFreeSpace(child.name); });
    for (Mp4Atom &child : children) {
        child.dropFreeSpace();
    }
}

} // namespace kruv
