#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# documentation.sh KRUV DIST: each command's flags in the manual page and in the completions are those of its --help.
set -euo pipefail
kruv=$1
dist=$2
failures=0

flags() { grep -oE -- '--[a-z][a-z-]*' | sort -u; }
# The lines of standard input from the one that matches $1 up to the next that matches $2.
section() { awk -v first="$1" -v last="$2" 'inside && $0 ~ last { exit } inside { print } $0 ~ first { inside = 1 }'; }

# compare COMMAND PLACE: expects on standard input the flags that --help lists for COMMAND.
compare() {
    local difference
    if ! difference=$(diff <(options "$1") -); then
        printf '%s, kruv %s (<: --help has it, >: only there):\n%s\n' "$2" "$1" "$difference"
        failures=$((failures + 1))
    fi
}
# Only what begins a line of the option list: the descriptions name flags too.
options() {
    "$kruv" $1 --help | section '^Options:' '^$' | grep -oE '^  -[^ ]*' | flags
}
# subcommands COMMAND: the names that --help lists.
subcommands() { "$kruv" $1 --help | section '^Subcommands:' '^$' | awk '/^  [a-z]/ { print $1 }'; }

commands=()
for name in $(subcommands ""); do
    inner=$(subcommands "$name")
    if [ -z "$inner" ]; then
        commands+=("$name")
    fi
    for second in $inner; do
        commands+=("$name $second")
    done
done
[ "${#commands[@]}" -gt 0 ]

for command in "${commands[@]}"; do
    section "^.SH \"KRUV ${command^^}\"" '^.SH' <"$dist/kruv.1" | sed 's/\\-/-/g' | grep -E '^\\fB-' | flags |
        compare "$command" kruv.1
    section "^    (\"$command\"|$command)\\)$" ';;' <"$dist/completions/kruv.bash" | flags |
        compare "$command" kruv.bash
    section "^  ${command/ /\\\\\\\\ }\\)$" ';;' <"$dist/completions/_kruv" | grep -oE "^ +'(--[a-z-]+|.*\}')" | flags |
        compare "$command" _kruv
    { grep "__kruv_in $command'" "$dist/completions/kruv.fish" || true; } | grep -oE -- '-l [a-z-]+' | sed 's/-l /--/' | flags |
        compare "$command" kruv.fish
done
exit $((failures > 0))
