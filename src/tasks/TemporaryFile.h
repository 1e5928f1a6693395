// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// A new, empty file with a unique name, for a job to pass audio from one step to the next. Removed with the
/// object, however the job ends.
class TemporaryFile
{
public:
    /// Throws std::runtime_error when the file can't be made in `folder`.
    TemporaryFile(const QString &folder, const QString &extension);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    const QString &path() const { return m_path; }
    /// Leaves the file in place.
    void keep() { m_kept = true; }

private:
    QString m_path;
    bool m_kept = false;
};

} // namespace kruv
