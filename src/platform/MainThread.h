// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

/// The one way work crosses to the main thread. The main thread is the one that QCoreApplication lives in.
namespace kruv::MainThread {

bool isCurrent();

/// Queues `work` for the main thread's event loop and returns at once, also when called on the main thread.
void post(std::function<void()> work);

/// Runs `work` on the main thread and waits for it; calls it directly when already there. What `work` throws
/// is thrown here.
void run(const std::function<void()> &work);

} // namespace kruv::MainThread
