// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <chrono>
#include <functional>

namespace kruv::TaskPool {

/// Runs `work` on the shared background pool: one thread per running job, never fewer than the queue starts.
void start(std::function<void()> work);

/// Waits until no work is left. False when that took longer than `limit`. Work that waits for the main thread
/// must be over before the main thread may wait here.
bool waitForDone(std::chrono::milliseconds limit);

/// For the end of a run, when no job is left: waits for the pool's last work and does what it posted. Main
/// thread.
void drain();

} // namespace kruv::TaskPool
