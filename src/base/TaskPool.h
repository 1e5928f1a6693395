// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

namespace kruv::TaskPool {

/// Runs `work` on the shared background pool: one thread per running job, never fewer than the queue starts.
void start(std::function<void()> work);

/// Waits until the pool is idle and what its work posted is done, while the main thread goes on serving
/// events (jobs post to it). Main thread.
void drain();

} // namespace kruv::TaskPool
