#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Sources of every lossless format with one wrong bit each, or cut short, against every job that reads them: how many
# runs there were, and how many ended with success and other audio than the sound source has (at most 0). The few of
# them that ./test runs are drawn with another seed. Takes about eight minutes on two processors.
# usage: bench/damage.sh [BUILD-FOLDER] [DAMAGES-OF-EACH-FORMAT] [SEED]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build}
export KRUV_DAMAGES=${2:-290} KRUV_SEED=${3:-1} KRUV_RESOURCES QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
KRUV_RESOURCES=$(realpath "$build/resources")

for format in flac wv tta ape m4a shn wav; do
    echo "$format"
done | xargs -P "$(nproc)" -I{} "$build/tests/convert/damage_test" --gtest_filter='*/{}' --gtest_brief=1
