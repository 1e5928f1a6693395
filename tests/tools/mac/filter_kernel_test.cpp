// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "mac/FilterKernel.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace kruv::mac::test {

namespace {

std::vector<int16_t> randomNumbers(std::size_t count, std::mt19937 &random, bool extreme)
{
    std::vector<int16_t> numbers(count);
    for (int16_t &number : numbers) {
        number = extreme ? (random() % 2 ? int16_t{-32768} : int16_t{32767}) : static_cast<int16_t>(random());
    }
    return numbers;
}

} // namespace

// Every kernel must wrap exactly as the plain loop, at every order in use and at odd addresses.
TEST(FilterKernel, AllGiveTheBitsOfThePortableOne)
{
    std::mt19937 random(3);
    const auto kernels = availableKernels();
    ASSERT_EQ(kernels.front().name, std::string("portable"));
    for (const int order : {16, 32, 64, 256, 1280}) {
        for (int round = 0; round < 60; ++round) {
            const bool extreme = round % 3 == 0;
            const auto count = static_cast<std::size_t>(order) + 1;
            const auto coefficients = randomNumbers(count, random, extreme);
            const auto history = randomNumbers(count, random, extreme);
            const auto steps = randomNumbers(count, random, extreme);
            const int sign = round % 3 - 1;
            auto expected = coefficients;
            const int32_t sum = kernels.front().run(&expected[1], &history[1], &steps[1], sign, order);
            for (const NamedKernel &kernel : kernels.subspan(1)) {
                auto actual = coefficients;
                EXPECT_EQ(kernel.run(&actual[1], &history[1], &steps[1], sign, order), sum) << kernel.name;
                EXPECT_EQ(actual, expected) << kernel.name << " at order " << order;
            }
        }
    }
}

} // namespace kruv::mac::test
