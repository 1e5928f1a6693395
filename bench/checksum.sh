#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# One MD5 list, made and verified, against md5sum and md5sum -c over the same files in the same run, with one
# processor and with two; then both with nothing of the files in memory, against reading them with dd.
# usage: bench/checksum.sh [BUILD-FOLDER] [MEGABYTES] [FILES] [RUNS]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} megabytes=${2:-4096} files=${3:-64} runs=${4:-3}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C.UTF-8

mkdir "$work/album"
for number in $(seq -w 1 "$files"); do
    head -c "$((megabytes * 1024 * 1024 / files))" /dev/urandom >"$work/album/$number.wav"
done
sync
cd "$work/album"

cached() { cat "$work"/album/*.wav; }
forget() { # drops these files, and no others, from memory
    for file in "$work"/album/*.wav; do
        dd if="$file" iflag=nocache count=0 status=none
    done
}
ours_create() { taskset -c "$1" "$build/kruv" checksum create --kind md5 --quiet --overwrite --save "$work/album/l.md5" "$work/album"; }
ours_verify() { taskset -c "$1" "$build/kruv" checksum verify --quiet "$work/album/l.md5"; }
# shellcheck disable=SC2035 # the names begin with digits
rival_create() { taskset -c "$1" md5sum -b *.wav >"$work/rival.md5"; }
rival_verify() { taskset -c "$1" md5sum -c --quiet "$work/album/l.md5"; }
disk_alone() { for file in "$work"/album/*.wav; do dd if="$file" of=/dev/null bs=1M status=none; done; }

ours_create 0,1
rival_create 0
diff <(grep -v '^#' l.md5 | grep .) "$work/rival.md5" # the same lines in the same order
for what in create verify; do
    compare "$what, one processor" "$(least "$runs" cached ours_$what 0)" "$(least "$runs" cached rival_$what 0)" 1.02
    compare "$what, two processors (md5sum has one)" "$(least "$runs" cached ours_$what 0,1)" \
        "$(least "$runs" cached rival_$what 0,1)" 0.6
done
for what in create verify; do
    compare "$what, cold, one processor" "$(least "$runs" forget ours_$what 0)" "$(least "$runs" forget rival_$what 0)" 1.02
done
compare "create, cold, two processors (rival: dd)" "$(least "$runs" forget ours_create 0,1)" "$(least "$runs" forget disk_alone)" "(reported)"
