// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/FileEdit.h"

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace kruv {

/// While one lives, it takes down what would take back what this thread writes into files by
/// StagedFileStream. One at a time in a thread.
class EditLog
{
public:
    /// Hears before each edit, where that is known, what would take it and all before it back, and how many
    /// bytes the file will have.
    using Listener = std::function<void(const QByteArray &packed, qint64 size)>;

    explicit EditLog(Listener listener = {});
    ~EditLog();
    EditLog(const EditLog &) = delete;
    EditLog &operator=(const EditLog &) = delete;

    /// That of this thread; null where there is none.
    static EditLog *current();

    /// `back` will take back what is about to be written.
    void foretell(const FileEdit &back);
    /// `back` takes back what was written just now; nothing where that is not known.
    void add(std::optional<FileEdit> back);
    /// All of it, for FileEdit::unpack(), what was written last first; empty where nothing was written, and
    /// where it is too much to be kept or not known.
    QByteArray packed() const;

private:
    QByteArray packedWith(const FileEdit *next) const;

    const Listener m_listener;
    std::vector<FileEdit> m_edits; // in the order of writing
    qint64 m_size = 0;
    bool m_isComplete = true;
    QByteArray m_foretold; // packed
    std::size_t m_editsForetold = 0;
};

} // namespace kruv
