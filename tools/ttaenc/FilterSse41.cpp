// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/Filter.h"
#include "ttaenc/FilterKernel.h"

#include <smmintrin.h>

namespace kruv::ttaenc {

namespace {

/// The eight taps in two registers: the older four and the newer four.
struct Sse41Taps
{
    __m128i oldHistory = _mm_setzero_si128();
    __m128i newHistory = _mm_setzero_si128();
    __m128i oldWeights = _mm_setzero_si128();
    __m128i newWeights = _mm_setzero_si128();
    __m128i oldSteps = _mm_setzero_si128();
    __m128i newSteps = _mm_setzero_si128();

    inline std::uint32_t adaptAndSum(std::int32_t error)
    {
        const __m128i direction = _mm_set1_epi32(error);
        oldWeights = _mm_add_epi32(oldWeights, _mm_sign_epi32(oldSteps, direction));
        newWeights = _mm_add_epi32(newWeights, _mm_sign_epi32(newSteps, direction));
        __m128i sum =
            _mm_add_epi32(_mm_mullo_epi32(oldHistory, oldWeights), _mm_mullo_epi32(newHistory, newWeights));
        sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, _MM_SHUFFLE(1, 0, 3, 2)));
        sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, _MM_SHUFFLE(2, 3, 0, 1)));
        return static_cast<std::uint32_t>(_mm_cvtsi128_si32(sum));
    }

    inline void push(std::uint32_t value)
    {
        const __m128i sizes = _mm_setr_epi32(1, 2, 2, 4);
        const __m128i negative = _mm_srai_epi32(newHistory, 31);
        oldSteps = _mm_alignr_epi8(newSteps, oldSteps, 4);
        newSteps = _mm_sub_epi32(_mm_xor_si128(sizes, negative), negative);

        oldHistory = _mm_alignr_epi8(newHistory, oldHistory, 4);
        // Each difference is the value less the sum of the newer elements of the history.
        __m128i sums = _mm_srli_si128(newHistory, 4);
        sums =
            _mm_add_epi32(sums, _mm_add_epi32(_mm_srli_si128(newHistory, 8), _mm_srli_si128(newHistory, 12)));
        newHistory = _mm_sub_epi32(_mm_set1_epi32(static_cast<std::int32_t>(value)), sums);
    }
};

} // namespace

const Filter *Filter::sse41()
{
    static constexpr Filter filter = {filterFrame<Sse41Taps, true>, filterFrame<Sse41Taps, false>};
    static const bool usable = __builtin_cpu_supports("sse4.1");
    return usable ? &filter : nullptr;
}

} // namespace kruv::ttaenc
