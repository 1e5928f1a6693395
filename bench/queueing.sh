#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# From the command to the start of the first job's tool, with 20,000 files, recorded in a journal of its own. The rival is
# find with xargs, which starts its first tool once it has read some names.
# usage: bench/queueing.sh [BUILD-FOLDER] [FILES]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} files=${2:-20000}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export KRUV_JOURNAL=$work/journal.db

mkdir "$work/tools" "$work/many"
# Ends its caller, too: only the first start matters.
# shellcheck disable=SC2016 # for the shell that reads it
printf '#!/bin/sh\nkill -9 $PPID\n' >"$work/tools/flac"
chmod +x "$work/tools/flac"
sox -n -r 44100 -c 2 -b 16 "$work/1.wav" synth 0.1 sine 440
# shellcheck disable=SC2016
for number in $(seq "$files"); do echo "$work/many/a track with a name of usual length $number.wav"; done |
    xargs -d '\n' -n 1000 sh -c 'tee "$@" <"$0" >/dev/null' "$work/1.wav"

empty() { rm -rf "$work/out" "$work"/journal.db* && mkdir "$work/out"; }
ours() {
    KRUV_RESOURCES=$work/tools "$build/kruv" encode --to flac --quiet --output "$work/out" "$work/many" || [ $? = 137 ]
}
rival() { (cd "$work/many" && find . -name '*.wav' -print0 | xargs -0 -P 2 -I{} "$work/tools/flac" {}) || true; }
ours=$(least 5 empty ours)
compare "$files files, from the command to the first tool" "$ours" "$(least 5 empty rival)" "(0.5 s)"
