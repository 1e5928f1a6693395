#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Apple Lossless encoding and decoding and the conversion of WAV and AIFF into each other, against the ffmpeg program on
# the same files in the same run; and the memory that a long 24-bit file takes.
# usage: bench/convert.sh [BUILD-FOLDER] [MINUTES-OF-MUSIC] [MINUTES-OF-THE-LONG-FILE]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} minutes=${2:-10} long=${3:-120}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/out" "$work/two"

music() { # FILE RATE BITS MINUTES
    sox -n -r "$2" -c 2 -b "$3" "$work/bar.wav" synth 60 pluck A2 pluck E3 tremolo 3 40
    sox "$work/bar.wav" "$1" repeat $(($4 - 1))
}
empty() { rm -f "$work"/out/*; }
ours() { # VERB FORMAT PATH...
    "$build/kruv" "$1" --to "$2" --quiet --output "$work/out" "${@:3}"
}
ours_two() { "$build/kruv" "$1" --to "$2" --jobs 2 --quiet --output "$work/out" "$work"/two/*."$3"; }
rival() { ffmpeg -nostdin -v error -y -i "$1" "${@:2}"; }
rival_two() { # FROM TO OPTIONS...
    (cd "$work/two" && printf '%s\n' *."$1" | sed "s/\.$1\$//" |
        xargs -P 2 -I{} ffmpeg -nostdin -v error -y -i "{}.$1" "${@:3}" "$work/out/{}.$2")
}
peak() { # COMMAND...: most memory at one time, MiB
    /usr/bin/time -f %M -o "$work/peak" "$@" && awk '{ printf "%.0f MiB\n", $1 / 1024 }' "$work/peak"
}

music "$work/a.wav" 44100 16 "$minutes"
sox "$work/a.wav" "$work/b.aiff"
rival "$work/a.wav" -c:a alac "$work/c.m4a"
for number in 1 2 3 4; do
    ln "$work/a.wav" "$work/two/$number.wav"
    ln "$work/c.m4a" "$work/two/$number.m4a"
done
echo "$minutes minutes of CD audio, the best of five runs"
compare "WAV to Apple Lossless" "$(least 5 empty ours encode m4a "$work/a.wav")" \
    "$(least 5 empty rival "$work/a.wav" -c:a alac "$work/out/a.m4a")" 1.0
compare "Apple Lossless to WAV" "$(least 5 empty ours decode wav "$work/c.m4a")" \
    "$(least 5 empty rival "$work/c.m4a" "$work/out/c.wav")" 1.0
compare "WAV to AIFF" "$(least 5 empty ours decode aiff "$work/a.wav")" \
    "$(least 5 empty rival "$work/a.wav" "$work/out/a.aiff")" 1.0
compare "AIFF to WAV" "$(least 5 empty ours decode wav "$work/b.aiff")" \
    "$(least 5 empty rival "$work/b.aiff" "$work/out/b.wav")" 1.0
compare "four files to Apple Lossless, two at a time" "$(least 3 empty ours_two encode m4a wav)" \
    "$(least 3 empty rival_two wav m4a -c:a alac)" 1.05
compare "four files of Apple Lossless, two at a time" "$(least 3 empty ours_two decode wav m4a)" \
    "$(least 3 empty rival_two m4a wav)" 1.05

rm -rf "$work/two"
for length in 1 "$long"; do
    empty
    music "$work/long.wav" 96000 24 "$length"
    printf 'memory for %s minutes at 24 bit, 96 kHz: to Apple Lossless %s' "$length" \
        "$(peak "$build/kruv" encode --to m4a --quiet --output "$work/out" "$work/long.wav")"
    printf ', to AIFF %s\n' "$(peak "$build/kruv" decode --to aiff --quiet --output "$work/out" "$work/long.wav")"
done
