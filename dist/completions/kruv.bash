# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Completion of kruv for bash.

_kruv()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]} options=
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        case $word in
        -*) mapfile -t COMPREPLY < <(compgen -W "--help --version --tab" -- "$word") ;;
        *)
            mapfile -t COMPREPLY < <(compgen -W "encode decode verify checksum util tools demo" -- "$word")
            ((${#COMPREPLY[@]})) || compopt -o default
            ;;
        esac
        return
    fi
    if [[ $command == checksum ]]; then
        if ((COMP_CWORD == 2)); then
            mapfile -t COMPREPLY < <(compgen -W "create verify --help" -- "$word")
            return
        fi
        command="checksum ${COMP_WORDS[2]}"
    elif [[ $command == util ]]; then
        if ((COMP_CWORD == 2)); then
            mapfile -t COMPREPLY < <(compgen -W "rename replay-gain resample de-emphasis dvd-audio extract-cd --help" -- "$word")
            return
        fi
        command="util ${COMP_WORDS[2]}"
    fi
    case $command:$before in
    --tab:--tab) mapfile -t COMPREPLY < <(compgen -W "decode encode checksum util about" -- "$word") && return ;;
    encode:--to) mapfile -t COMPREPLY < <(compgen -W "flac shn wv tta ape m4a" -- "$word") && return ;;
    encode:--wavpack-mode) mapfile -t COMPREPLY < <(compgen -W "fast high" -- "$word") && return ;;
    decode:--to) mapfile -t COMPREPLY < <(compgen -W "wav aiff" -- "$word") && return ;;
    "checksum create":-k|"checksum create":--kind) mapfile -t COMPREPLY < <(compgen -W "md5 ffp st5" -- "$word") && return ;;
    "util resample":--rate) mapfile -t COMPREPLY < <(compgen -W "44.1 48 88.2 96 176.4 192" -- "$word") && return ;;
    "util extract-cd":--device) mapfile -t COMPREPLY < <(compgen -G "/dev/sr*" -- "$word") && return ;;
    *:--output | encode:-o | decode:-o | util\ *:-o)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
        return
        ;;
    *:--jobs | *:-j | *:--level | *:--prefix | *:--tracks) return ;;
    esac
    case $command in
    encode)
        options="--help --jobs --quiet --json --no-color --output --beside-source --delete-originals --yes --to --level --lax --verify --keep-foreign-metadata --fingerprints --md5 --wavpack-mode --overwrite"
        ;;
    decode)
        options="--help --jobs --quiet --json --no-color --output --beside-source --delete-originals --yes --to --through-errors --keep-foreign-metadata"
        ;;
    verify)
        options="--help --jobs --quiet --json --no-color"
        ;;
    "checksum create")
        options="--help --jobs --quiet --json --no-color --kind --save --beside-source --overwrite"
        ;;
    "checksum verify")
        options="--help --jobs --quiet --json --no-color"
        ;;
    "util rename")
        options="--help --jobs --quiet --json --no-color --prefix"
        ;;
    "util replay-gain")
        options="--help --jobs --quiet --json --no-color --remove"
        ;;
    "util resample")
        options="--help --jobs --quiet --json --no-color --rate --output --overwrite"
        ;;
    "util de-emphasis")
        options="--help --jobs --quiet --json --no-color --output --overwrite"
        ;;
    "util dvd-audio")
        options="--help --jobs --quiet --json --no-color --output --overwrite"
        ;;
    "util extract-cd")
        options="--help --jobs --quiet --json --no-color --output --overwrite --device --tracks --one-file"
        ;;
    tools)
        options="--help --json"
        ;;
    demo)
        options="--help"
        ;;
    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    else
        compopt -o default
    fi
}
complete -F _kruv kruv
