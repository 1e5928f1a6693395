// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <functional>

namespace kruv::test {

/// Serves events until `predicate` holds. False when it did not within a minute, which no healthy run needs.
bool waitUntil(const std::function<bool()> &predicate);

/// Serves the events that are waiting now and those that they post.
void serveEvents();

/// Serves events until the background pool is idle and what its work posted is done.
void drainPool();

/// Whether a process ends by itself or has ended; `process` is its number in digits. One that was killed
/// takes a moment to be gone.
bool endsSoon(const QByteArray &process);

} // namespace kruv::test
