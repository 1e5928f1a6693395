# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Shared by the benchmarks: sourced, not run.

# shellcheck disable=SC2034 # for those that source it
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

export KRUV_JOURNAL= # what is measured is no part of a person's history

# seconds COMMAND...: wall time of one run, output thrown away.
seconds() {
    local start end
    start=$(date +%s.%N)
    "$@" >/dev/null 2>&1 </dev/null || { echo "bench: failed: $*" >&2; return 1; }
    end=$(date +%s.%N)
    awk -v a="$start" -v b="$end" 'BEGIN { printf "%.3f\n", b - a }'
}

# least TIMES BEFORE COMMAND...: the least wall time of several runs; BEFORE is a command run before each, not timed.
least() {
    local times=$1 before=$2 all
    shift 2
    all=$(for _ in $(seq "$times"); do
        $before >/dev/null && seconds "$@" || exit 1
    done) || return 1
    sort -g <<<"$all" | sed -n 1p
}

# compare NAME OURS RIVAL LIMIT: prints both times and their ratio against what is wanted. Ends the benchmark where a
# time is missing: a command that failed has no ratio.
compare() {
    local time
    for time in "$2" "$3"; do
        [[ $time =~ ^[0-9]+(\.[0-9]+)?$ && $time =~ [1-9] ]] || { echo "bench: $1: a command failed, no time taken" >&2; exit 1; }
    done
    awk -v name="$1" -v ours="$2" -v rival="$3" -v limit="$4" \
        'BEGIN { printf "%-44s %9.3f s  rival %9.3f s  ratio %.3f (wanted: at most %s)\n", name, ours, rival, ours / rival, limit }'
}
