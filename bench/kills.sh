#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# What a killed program costs: conversions of many short files, lossless ones with --delete-originals, are killed at
# random moments, the program alone or all of its processes, and resumed. Counts, and ends with 1 where one isn't 0:
# audio that was lost, half files under final names, temporary files that stayed, and runs that did not end with the
# files of an undisturbed one.
# usage: bench/kills.sh [BUILD-FOLDER] [ROUNDS] [FILES] [SEED]
set -euo pipefail
. "$(dirname "$0")/lib.sh"
build=${1:-$top/build} rounds=${2:-50} files=${3:-60} RANDOM=${4:-1}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data
kruv=$build/kruv

mkdir -p "$work/wav/a" "$work/wav/b c"
for number in $(seq "$files"); do
    folder=a && [ $((number % 2)) = 0 ] && folder="b c"
    sox -R -n -r 44100 -c 2 -b 16 "$work/wav/$folder/$number.wav" synth 0.$((number % 9 + 1)) pluck C$((number % 5 + 1))
done
"$kruv" encode --to flac -q --output "$work" "$work/wav/a/1.wav" # tells early where nothing works
mkdir "$work/flac"
cp -r "$work/wav/." "$work/flac"
"$kruv" encode --to flac -q --beside-source --delete-originals -y "$work/flac"

arguments=(
    "wav encode --to flac --delete-originals -y --fingerprints" "wav encode --to wv --delete-originals -y"
    "wav encode --to shn --delete-originals -y --md5" "wav encode --to tta --delete-originals -y"
    "wav encode --to ape --delete-originals -y" "wav encode --to m4a --delete-originals -y"
    "flac decode --to wav --delete-originals -y" "flac decode --to aiff" "wav lossy --to mp3" "wav lossy --to opus"
)
# What is the same in two files of the same audio: bytes, but for Opus, whose streams have a random number, and for M4A
# and lists, which tell when they were made.
content() {
    case $1 in
    *.opus | *.m4a) ffmpeg -nostdin -v error -i "$1" -map 0:a -f md5 - ;;
    *.txt | *.md5) grep -v '^[;#]' "$1" | md5sum ;;
    *) md5sum <"$1" ;;
    esac
}
contents() {
    (cd "$1" && find . -name '.?*' -prune -o -type f -print | sort | while read -r each; do
        echo "$each $(content "$each" | cut -d ' ' -f 1)"
    done)
}
place() { case $1 in *--md5*) echo --output "$2/a" ;; *) echo --beside-source ;; esac }

declare -A whole length
lost=0 half=0 strays=0 unlike=0
for round in $(seq "$rounds"); do
    each=${arguments[RANDOM % ${#arguments[@]}]}
    read -r source command <<<"$each"
    if [ -z "${whole[$each]:-}" ]; then
        cp -r "$work/$source" "$work/whole"
        begin=$(date +%s%N)
        # shellcheck disable=SC2086,SC2046 # several words
        "$kruv" $command -q $(place "$each" "$work/whole") "$work/whole" >/dev/null
        length[$each]=$((($(date +%s%N) - begin) / 1000))
        whole[$each]=$(contents "$work/whole")
        rm -rf "$work/whole"
    fi
    rm -rf "$work/run" "$work/state" && cp -r "$work/$source" "$work/run"
    export KRUV_JOURNAL=$work/state/journal.db
    # shellcheck disable=SC2086,SC2046
    setsid "$kruv" $command -q $(place "$each" "$work/run") "$work/run" >/dev/null 2>&1 &
    program=$!
    sleep "$(printf '0.%06d' $(((RANDOM * 32768 + RANDOM) % (length[$each] < 999999 ? length[$each] : 999999))))"
    if [ $((RANDOM % 2)) = 0 ]; then kill -9 "$program"; else kill -9 -- "-$program"; fi 2>/dev/null || true
    wait "$program" 2>/dev/null || true
    sleep 0.1 # what watches over the tools ends them

    after=$(contents "$work/run")
    sources=$(contents "$work/$source")
    while read -r line; do
        grep -qxF -- "$line" <<<"${whole[$each]}" || grep -qxF -- "$line" <<<"$sources" || {
            half=$((half + 1)) && echo "round $round ($each): half: $line"
        }
    done <<<"$after"
    while read -r line; do
        name=${line% *} && name=${name##*/} # outputs may lie elsewhere
        grep -qF -- "/${name%.*}." <<<"$after" || { lost=$((lost + 1)) && echo "round $round ($each): lost: $line"; }
    done <<<"$sources"
    if [ -e "$KRUV_JOURNAL" ]; then "$kruv" resume -q >"$work/said" 2>&1 || cat "$work/said"; fi
    if [ "$("$kruv" history --json 2>/dev/null | wc -l)" = 0 ]; then
        [ "$after" = "$sources" ] || { unlike=$((unlike + 1)) && echo "round $round ($each): nothing recorded"; }
        continue # killed before there was a list of jobs
    fi
    if [ "$(contents "$work/run")" != "${whole[$each]}" ]; then
        unlike=$((unlike + 1))
        echo "round $round ($each): resumed to something else"
        diff <(contents "$work/run") <(echo "${whole[$each]}") | head -5 || true
    fi
    found=$(find "$work/run" -name '.?*')
    [ -z "$found" ] || { strays=$((strays + 1)) && echo "round $round ($each): strays: $found"; }
done
echo "$rounds kills: audio lost $lost, half files $half, strays $strays, resumed to something else $unlike"
[ $((lost + half + strays + unlike)) = 0 ]
