// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/Digest.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

#include <functional>

namespace kruv {

/// Digests of whole files, as lower-case hexadecimal text. Any thread but the main one: they read as long as
/// the file is.
class FileHash
{
    Q_DECLARE_TR_FUNCTIONS(kruv::FileHash)
public:
    using Algorithm = Digest::Algorithm;
    enum class Problem {
        None,
        Missing,
        /// A folder, a device, a pipe: nothing that has an end.
        NotAFile,
        Unreadable,
        Stopped
    };
    struct Result
    {
        /// Null unless `problem` is None.
        QString digest;
        Problem problem = Problem::None;
        /// For a person: why there is no digest.
        QString message;
    };
    /// Told the share of the file that was read, 0 to 1, after each piece; false stops.
    using Observer = std::function<bool(double share)>;

    // Each returns a null string when the file can't be opened or a read fails.
    static QString md5HashOfFileAtPath(const QString &path);
    static QString sha1HashOfFileAtPath(const QString &path);
    static QString sha512HashOfFileAtPath(const QString &path);

    /// What all of them go through. `encodedPath` is the name as the file system has it.
    static Result hashOfFileAtPath(const QByteArray &encodedPath, Algorithm algorithm,
                                   const Observer &observer = {});
};

} // namespace kruv
