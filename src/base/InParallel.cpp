// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/InParallel.h"

#include "base/HeldWork.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace kruv {

std::size_t threadsForOneJob(int jobsAtOnce)
{
    const unsigned processors = std::max(1U, std::thread::hardware_concurrency());
    return std::min<std::size_t>(static_cast<std::size_t>(std::max(1, jobsAtOnce)), processors);
}

void inParallel(std::size_t count, std::size_t threads, const std::function<bool()> &stopped,
                const std::function<void(std::size_t index)> &work)
{
    std::atomic<std::size_t> next = 0;
    std::exception_ptr problem;
    std::mutex problemLock;
    const auto takeTurns = [&] {
        try {
            for (std::size_t index = next++; index < count && !stopped(); index = next++) {
                work(index);
            }
        } catch (...) {
            next = count;
            const std::lock_guard lock(problemLock);
            problem = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> helpers;
        for (std::size_t extra = 1; extra < std::min(threads, count); ++extra) {
            helpers.emplace_back([&takeTurns, work = HeldWork::current()] {
                const HeldWork held(work);
                takeTurns();
            });
        }
        takeTurns();
    }
    if (problem) {
        std::rethrow_exception(problem);
    }
}

} // namespace kruv
