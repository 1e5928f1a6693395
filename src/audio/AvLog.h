// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// FFmpeg's messages: kept off standard error, the last one of each thread held for our own.
namespace kruv::AvLog {

/// Takes FFmpeg's messages over for the process, and forgets what this thread has held. Cheap to call again.
void install();

/// The last error that FFmpeg reported on this thread, a space and its cause; then forgets it. `code` is what
/// the failing call returned and stands in where nothing was reported.
QString takeLastError(int code);

} // namespace kruv::AvLog
