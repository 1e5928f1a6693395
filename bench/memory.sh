#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Most memory that the program takes with 20,000 jobs in its queue, the first of which never ends. Wanted: at most 120 MB,
# and less than three times what one waiting job takes, which is the rival of the same run.
# usage: bench/memory.sh [BUILD-FOLDER] [FILES]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} files=${2:-20000}
work=$(mktemp -d)
program=
trap '[ -z "$program" ] || kill "$program"; wait; rm -rf "$work"' EXIT

mkdir "$work/tools" "$work/many" "$work/one" "$work/out"
printf '#!/bin/sh\nexec sleep 600\n' >"$work/tools/flac"
chmod +x "$work/tools/flac"
sox -n -r 44100 -c 2 -b 16 "$work/one/1.wav" synth 0.1 sine 440
for number in $(seq "$files"); do
    ln "$work/one/1.wav" "$work/many/a track with a name of usual length $number.wav"
done

# peak FOLDER: in kB, once the first job's tool runs and memory has been the same for three seconds.
peak() {
    local before=0 now=1
    KRUV_RESOURCES="$work/tools" "$build/kruv" encode --to flac --jobs 1 --quiet --output "$work/out" "$work/$1" >/dev/null 2>&1 &
    program=$!
    until pgrep -P "$program" >/dev/null && [ "$before" = "$now" ]; do
        kill -0 "$program" || { echo "bench: the program ended" >&2; exit 1; }
        before=$now
        sleep 3
        now=$(awk '/^VmHWM/ { print $2 }' "/proc/$program/status")
    done
    most=$now
    kill "$program"
    wait "$program" || true
    program=
}

peak one && one=$most
peak many && many=$most
awk -v one="$one" -v many="$many" -v files="$files" \
    'BEGIN { printf "%d waiting jobs: %.1f MB (wanted: at most 120); one job: %.1f MB; ratio %.2f (wanted: at most 3)\n", files, many / 1024, one / 1024, many / one }'
