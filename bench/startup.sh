#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Time from the start of the program to a painted window, against two other Qt audio programs, in the same run
# on a display and a session bus of its own. Needs the packages xvfb, dbus, kid3-qt and soundkonverter.
# usage: bench/startup.sh [BUILD-FOLDER]   (configured with -DKRUV_BENCH=ON)
set -euo pipefail
[ -n "${KRUV_BENCH_BUS:-}" ] || KRUV_BENCH_BUS=1 exec dbus-run-session -- "$0" "$@"
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build}
work=$(mktemp -d)
number=$((90 + RANDOM % 900))
Xvfb ":$number" -screen 0 1280x800x24 >/dev/null 2>&1 &
server=$!
trap 'kill $server 2>/dev/null; rm -rf "$work"' EXIT
export DISPLAY=:$number HOME=$work XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data XDG_CACHE_HOME=$work/cache
export XDG_RUNTIME_DIR=$work QT_QPA_PLATFORM=xcb
for _ in {1..50}; do
    [ -e "/tmp/.X11-unix/X$number" ] && break
    sleep 0.1
done

# first_paint COMMAND: the least of seven starts after one that warms the disk cache.
first_paint() {
    "$build/bench/kruv_bench_first_paint" "$@" >/dev/null
    for _ in {1..7}; do "$build/bench/kruv_bench_first_paint" "$@"; done | sort -g | head -n 1
}
ours=$(first_paint "$build/kruv")
compare "start-up against kid3-qt" "$ours" "$(first_paint kid3-qt 2>/dev/null)" 1.0
compare "start-up against soundkonverter" "$ours" "$(first_paint soundkonverter --nofork 2>/dev/null)" 1.0
