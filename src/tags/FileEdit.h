// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>

#include <optional>
#include <vector>

namespace kruv {

/// What makes one file of another: from its begin to its end, some bytes go and others come.
struct FileEdit
{
    struct Splice
    {
        qint64 offset = 0;  ///< in the file as it is before the edit
        qint64 removed = 0; ///< bytes
        QByteArray inserted = {};
        /// What the bytes that go are known by, block by block; of an edit that came from setMarks().
        QByteArray marks = {};

        void setMarks(const QByteArray &goes);
        /// Whether `there`, what the file has in their place, is what goes. With `orInserted` each block may
        /// also be as it is after the edit.
        bool isOn(const QByteArray &there, bool orInserted) const;
    };
    std::vector<Splice> splices = {}; ///< in ascending order
    qint64 made = 0;                  ///< bytes of the file that it makes

    /// All bytes that come.
    qint64 size() const;
    /// Bytes of the file that it is made for.
    qint64 sizeBefore() const;
    /// Whether all that stays keeps its place.
    bool isInPlace() const;

    /// Edits of one file, one after another, as bytes to be kept.
    static QByteArray pack(const std::vector<FileEdit> &edits);
    /// Nothing for bytes that are none of these.
    static std::optional<std::vector<FileEdit>> unpack(const QByteArray &bytes);

    /// The packed edits of several files, in an order that both sides know; those of which nothing is kept
    /// are empty. One file's stay as they are.
    static QByteArray bundle(const QList<QByteArray> &packed);
    /// Empty where they are not those of so many files.
    static QList<QByteArray> unbundle(const QByteArray &bytes, qsizetype files);
};

} // namespace kruv
