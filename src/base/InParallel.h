// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <functional>

namespace kruv {

/// As many threads as there are processors, at most as many as jobs may run at once.
std::size_t threadsForOneJob(int jobsAtOnce);

/// Calls `work` for 0 to count - 1, lowest first, on `threads` threads of which the caller's is one. Returns
/// when all calls have; begins no further one once `stopped` is true or a call has thrown, and then throws
/// the same.
void inParallel(std::size_t count, std::size_t threads, const std::function<bool()> &stopped,
                const std::function<void(std::size_t index)> &work);

} // namespace kruv
