# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Completion of kruv for bash: the program says what can follow.

_kruv()
{
    local candidate
    COMPREPLY=()
    while IFS=$'\t' read -r candidate _; do
        case $candidate in
        :files) compopt -o default ;;
        :folders) compopt -o dirnames ;;
        *) COMPREPLY+=("$(printf %q "$candidate")") ;;
        esac
    done < <("${COMP_WORDS[0]}" --complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
}
complete -F _kruv kruv
