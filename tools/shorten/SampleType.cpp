// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "shorten/SampleType.h"

#include "common/ToolError.h"

#include <string>

namespace kruv::shorten {

namespace {

constexpr SampleType types[] = {
    {1, 1, true, false}, {2, 1, false, false}, {3, 2, true, true},
    {4, 2, false, true}, {5, 2, true, false},  {6, 2, false, false},
};

} // namespace

const SampleType &SampleType::byNumber(std::uint32_t number)
{
    for (const SampleType &type : types) {
        if (type.number == number) {
            return type;
        }
    }
    const bool companded = number == 0 || (number >= 7 && number <= 10);
    throw tools::ToolError(companded ? "mu-law and A-law streams are not supported"
                                     : "unknown sample type " + std::to_string(number));
}

} // namespace kruv::shorten
