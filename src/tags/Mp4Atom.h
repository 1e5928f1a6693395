// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <stdexcept>
#include <vector>

namespace kruv {

/// Bytes that are no sound MP4, or that say something which can't be carried over safely.
class Mp4Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// An atom of an MP4 file (a "box" of ISO/IEC 14496-12) held in memory. The atoms on the way to the chunk
/// tables and to the item list are taken apart; every other is a leaf, kept byte for byte.
struct Mp4Atom
{
    QByteArray name; ///< four bytes
    /// A leaf's bytes with its header; of a container what stands between its header and its first child.
    QByteArray bytes;
    bool isContainer = false;
    std::vector<Mp4Atom> children;
    /// What follows a container's last child: too short for an atom, or an end mark.
    QByteArray tail;

    /// `bytes` is one whole atom of the index, moov at the top. Throws Mp4Error.
    static Mp4Atom parse(const QByteArray &bytes, const QByteArray &parent = {});
    /// An empty container.
    static Mp4Atom container(const QByteArray &name);

    /// Throws Mp4Error when an atom would be too large for its size field.
    QByteArray toBytes() const;
    qint64 size() const;
    /// A leaf's bytes without its header.
    QByteArray content() const;

    /// First child of that name; nullptr without one. Takes the name of a child of that child and so on too.
    Mp4Atom *find(std::initializer_list<const char *> path);
    Mp4Atom &add(Mp4Atom child);
    /// Takes the atoms "free" and "skip" out of this container and all below it.
    void dropFreeSpace();

    static bool isFreeSpace(const QByteArray &name) { return name == "free" || name == "skip"; }
};

/// An atom's header: its own length (8 or 16 bytes) and that of the whole atom as it is written (0 for one
/// that reaches to the end of the file).
struct Mp4AtomHeader
{
    qint64 headerLength = 0;
    qint64 length = 0;
    QByteArray name;

    /// Reads the header from the first bytes of an atom (16, or fewer at the end of the file). False when
    /// they can't be one.
    bool read(const QByteArray &bytes);
};

} // namespace kruv
