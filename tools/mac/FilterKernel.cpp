// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FilterKernel.h"

#include <vector>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace kruv::mac {

namespace {

int32_t portableKernel(int16_t *coefficients, const int16_t *history, const int16_t *steps, int sign,
                       int count)
{
    uint32_t sum = 0;
    for (int i = 0; i < count; ++i) {
        coefficients[i] = static_cast<int16_t>(coefficients[i] + sign * steps[i]);
        sum += static_cast<uint32_t>(int32_t{coefficients[i]} * history[i]);
    }
    return static_cast<int32_t>(sum);
}

#if defined(__x86_64__)

int32_t sse2Kernel(int16_t *coefficients, const int16_t *history, const int16_t *steps, int sign, int count)
{
    const __m128i factor = _mm_set1_epi16(static_cast<int16_t>(sign));
    __m128i even = _mm_setzero_si128();
    __m128i odd = _mm_setzero_si128();
    const auto part = [&](int i) {
        auto *place = reinterpret_cast<__m128i *>(coefficients + i);
        const __m128i step = _mm_loadu_si128(reinterpret_cast<const __m128i *>(steps + i));
        const __m128i past = _mm_loadu_si128(reinterpret_cast<const __m128i *>(history + i));
        const __m128i adapted = _mm_add_epi16(_mm_loadu_si128(place), _mm_mullo_epi16(step, factor));
        _mm_storeu_si128(place, adapted);
        return _mm_madd_epi16(adapted, past);
    };
    for (int i = 0; i < count; i += 16) {
        even = _mm_add_epi32(even, part(i));
        odd = _mm_add_epi32(odd, part(i + 8));
    }
    __m128i sum = _mm_add_epi32(even, odd);
    sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, _MM_SHUFFLE(1, 0, 3, 2)));
    sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, _MM_SHUFFLE(2, 3, 0, 1)));
    return _mm_cvtsi128_si32(sum);
}

__attribute__((target("avx2"))) inline __m256i avx2Part(int16_t *coefficients, const int16_t *history,
                                                        const int16_t *steps, __m256i factor)
{
    auto *place = reinterpret_cast<__m256i *>(coefficients);
    const __m256i step = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(steps));
    const __m256i past = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(history));
    const __m256i adapted = _mm256_add_epi16(_mm256_loadu_si256(place), _mm256_sign_epi16(step, factor));
    _mm256_storeu_si256(place, adapted);
    return _mm256_madd_epi16(adapted, past);
}

__attribute__((target("avx2"))) int32_t avx2Kernel(int16_t *coefficients, const int16_t *history,
                                                   const int16_t *steps, int sign, int count)
{
    const __m256i factor = _mm256_set1_epi16(static_cast<int16_t>(sign));
    __m256i even = _mm256_setzero_si256();
    __m256i odd = _mm256_setzero_si256();
    int i = 0;
    for (; i + 32 <= count; i += 32) {
        even = _mm256_add_epi32(even, avx2Part(coefficients + i, history + i, steps + i, factor));
        odd =
            _mm256_add_epi32(odd, avx2Part(coefficients + i + 16, history + i + 16, steps + i + 16, factor));
    }
    if (i < count) {
        even = _mm256_add_epi32(even, avx2Part(coefficients + i, history + i, steps + i, factor));
    }
    even = _mm256_add_epi32(even, odd);
    __m128i sum = _mm_add_epi32(_mm256_castsi256_si128(even), _mm256_extracti128_si256(even, 1));
    sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, _MM_SHUFFLE(1, 0, 3, 2)));
    sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, _MM_SHUFFLE(2, 3, 0, 1)));
    return _mm_cvtsi128_si32(sum);
}

#endif

std::vector<NamedKernel> findKernels()
{
    std::vector<NamedKernel> kernels{{"portable", portableKernel}};
#if defined(__x86_64__)
    kernels.push_back({"SSE2", sse2Kernel});
    if (__builtin_cpu_supports("avx2")) {
        kernels.push_back({"AVX2", avx2Kernel});
    }
#endif
    return kernels;
}

} // namespace

std::span<const NamedKernel> availableKernels()
{
    static const std::vector<NamedKernel> kernels = findKernels();
    return kernels;
}

FilterKernel fastestKernel()
{
    return availableKernels().back().run;
}

} // namespace kruv::mac
