// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <span>

namespace kruv {

/// The text of a list of FLAC fingerprints.
struct FingerprintList
{
    QString text;
    /// What metaflac said about files that it could not read; it is in the text too.
    QStringList problems;

    /// The header and `fingerprints`, as fingerprint() gives them, in their order.
    static FingerprintList of(std::span<const QString> fingerprints);

    /// Writes the list of `files` before it returns, while the main thread goes on serving all but the
    /// person's input, on as many threads as threadsForOneJob() gives. Returns what went wrong, a line each.
    /// Main thread.
    static QStringList writeAtOnce(const QStringList &files, const QString &path, int jobsAtOnce);
};

} // namespace kruv
