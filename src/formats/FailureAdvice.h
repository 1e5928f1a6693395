// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Turns what a failed job's tool printed into what a person can act on.
namespace kruv::FailureAdvice {

/// The tool's own words without banners, progress and empty lines; at most a handful of lines.
QString essence(const QString &toolText);

/// One sentence that says what to do, or nothing where none is known.
QString advice(const QString &toolText);

} // namespace kruv::FailureAdvice
