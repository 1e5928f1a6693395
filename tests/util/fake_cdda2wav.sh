#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Plays cdda2wav with a disc in the drive: KRUV_TEST_CUE names a cue sheet whose .bin lies beside it, and
# KRUV_TEST_BAD_TRACK a track in whose middle the drive goes away. Prints what the tool prints.
bulk=
[ "$1" = -B ] && bulk=1 && shift
if [ "$1 $2 $3 $4 $6 $7 $8" != "-L 1 -H -t -paranoia -Owav dev=IODVDServices/2" ]; then
    echo "cdda2wav: not the arguments of an extraction: $*" >&2
    exit 2
fi
first=${5%+*} last=${5#*+} bin=${KRUV_TEST_CUE%.cue}.bin

# Sector at which track $1 starts; the end of the disc for the one after the last.
start() {
    awk -F '[ :]+' -v end=$(($(wc -c <"$bin") / 2352)) -v track="$1" \
        '$2 == "TRACK" { number = $3 } $2 == "INDEX" && number == track { print ($4 * 60 + $5) * 75 + $6; found = 1 }
         END { if (!found) print end }' "$KRUV_TEST_CUE"
}
# Four bytes, low byte first.
number() {
    printf "\\$(printf %o $(($1 & 255)))\\$(printf %o $(($1 >> 8 & 255)))\\$(printf %o $(($1 >> 16 & 255)))\\0"
}
# wav NAME FROM TO: the sectors from FROM up to TO.
wav() {
    bytes=$((($3 - $2) * 2352))
    {
        printf RIFF && number $((bytes + 36)) && printf 'WAVEfmt ' && number 16 && number 131073 && number 44100
        number 176400 && number 1048580 && printf data && number $bytes
        dd if="$bin" bs=2352 skip="$2" count=$(($3 - $2)) 2>/dev/null
    } >"$1"
}
recorded() {
    printf 'percent_done:\n  0%%\r 50%%\r100%%  track %2u recorded successfully\n' "$1"
    echo "  0 rderr, 0 skip, 0 atom, 0 edge, 0 drop, 0 dup, 0 drift"
}

exec 2>&1
echo "Table of Contents: total tracks:$(grep -c TRACK "$KRUV_TEST_CUE"), (total time 0:00.24)"
if [ -z "$bulk" ]; then
    wav audio.wav "$(start "$first")" "$(start $((last + 1)))"
    recorded "$last"
    exit
fi
for track in $(seq "$first" "$last"); do
    name=$(printf 'audio_%02u.wav' "$track")
    if [ "$track" = "$KRUV_TEST_BAD_TRACK" ]; then
        wav "$name" "$(start "$track")" $(($(start "$track") + 1))
        printf 'percent_done:\n  0%%\r 50%%\ncdda2wav: Input/output error. Read error\n'
        exit 15
    fi
    wav "$name" "$(start "$track")" "$(start $((track + 1)))"
    recorded "$track"
done
