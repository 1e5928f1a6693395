// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <stop_token>

namespace kruv {

/// "<file name>:<MD5 of the decoded audio>" with the line break that metaflac ends it with, or metaflac's own
/// message (it contains "FLAC__METADATA_CHAIN") for a file that it can't read. `stop` ends it. Blocks; not
/// for the main thread.
QString fingerprint(const QString &path, std::stop_token stop = {});

/// True for what metaflac says about a file that it can't read.
bool isMetaflacError(const QString &fingerprint);

/// False where metaflac was ended, or said something else.
bool isFingerprint(const QString &fingerprint);

} // namespace kruv
