#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Taking 100,000 files in 2,000 folders into a list against find and a natural sort of its output, in the same run.
# usage: bench/intake.sh [BUILD-FOLDER]   (configured with -DKRUV_BENCH=ON)
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for folder in $(seq 2000); do
    mkdir -p "$work/tree/Some Band $((folder % 40))/Concert $folder"
    (cd "$work/tree/Some Band $((folder % 40))/Concert $folder" && touch Track\ {1..50}.wav)
done
rival() { find "$work/tree" -type f | sort -V; }
ours() { "$build/bench/kruv_bench_intake" "$work/tree"; }
ours >/dev/null
read -r count seconds memory < <(ours)
for _ in 1 2 3 4; do
    read -r count again memory < <(ours)
    seconds=$(printf '%s\n%s\n' "$seconds" "$again" | sort -g | head -n 1)
done
compare "intake of $count files" "$seconds" "$(least 5 true rival)" 2.0
echo "peak memory $memory MB (wanted: under 150)"
