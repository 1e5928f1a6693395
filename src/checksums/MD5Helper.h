// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/FileHash.h"

namespace kruv {

class MD5Helper
{
public:
    /// The MD5 of a file's bytes; null where it can't be read.
    static QString getMD5FromFile(const QString &path) { return FileHash::md5HashOfFileAtPath(path); }
};

} // namespace kruv
