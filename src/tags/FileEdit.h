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
    };
    std::vector<Splice> splices = {}; ///< in ascending order

    /// All bytes that come.
    qint64 size() const;

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
