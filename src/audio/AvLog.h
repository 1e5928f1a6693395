// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <string_view>

/// FFmpeg's messages: kept off standard error, the last one of each thread held for our own.
namespace kruv::AvLog {

/// Takes FFmpeg's messages over for the process, and forgets what this thread has held. Cheap to call again.
void install();

/// Whether FFmpeg has reported an error on this thread since, also one that it went on after.
bool hasComplained();
/// Whether the last of them begins like this.
bool lastErrorBegins(std::string_view text);

/// The last error that FFmpeg reported on this thread, a space and its cause; then forgets it. `code` is what
/// the failing call returned and stands in where nothing was reported.
QString takeLastError(int code);

} // namespace kruv::AvLog
