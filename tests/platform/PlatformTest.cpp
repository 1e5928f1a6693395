// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/MainThread.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QThread>

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace kruv;
using namespace kruv::test;

TEST(MainThread, ServesManyThreadsEachInItsOwnOrder)
{
    constexpr int threadCount = 4;
    constexpr int perThread = 300;
    std::vector<std::vector<int>> seen(threadCount);
    std::atomic<int> finished = 0;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < perThread; ++i) {
                auto note = [&, thread, i] {
                    EXPECT_TRUE(MainThread::isCurrent());
                    seen[static_cast<std::size_t>(thread)].push_back(i);
                };
                if (i % 10 == 0) {
                    MainThread::run(note);
                    EXPECT_EQ(seen[static_cast<std::size_t>(thread)].back(), i) << "waited for";
                } else {
                    MainThread::post(note);
                }
            }
            EXPECT_FALSE(MainThread::isCurrent());
            ++finished;
        });
    }
    EXPECT_TRUE(waitUntil([&] { return finished == threadCount; }));
    for (std::thread &thread : threads) {
        thread.join();
    }
    serveEvents();
    for (const std::vector<int> &numbers : seen) {
        EXPECT_EQ(numbers.size(), static_cast<std::size_t>(perThread));
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
    }
}

TEST(MainThread, ThrowsWhereItWasAskedToRun)
{
    std::atomic<bool> caught = false;
    std::atomic<bool> finished = false;
    std::thread thread([&] {
        try {
            MainThread::run([] { throw std::runtime_error("no"); });
        } catch (const std::runtime_error &) {
            caught = true;
        }
        finished = true;
    });
    EXPECT_TRUE(waitUntil([&] { return finished.load(); }));
    thread.join();
    EXPECT_TRUE(caught);
}
