# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Shared by run, test and .ci/run: what is missing gets installed, then configured and built. Sourced, not run.

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$top/build

# ccache finds what another tree of this machine compiled, precompiled headers included.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$top} CCACHE_NOHASHDIR=${CCACHE_NOHASHDIR:-1}
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}

say() { printf '%s\n' "kruv: $*" >&2; }

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        say "installing packages needs root or sudo; run as root: $*"
        return 1
    fi
}

# install_packages NAME...
install_packages() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" </dev/null >/dev/null
}

# ensure_packages GROUP...: installs the packages of these groups that are missing.
ensure_packages() {
    local wanted stamp missing
    wanted=$(awk -v groups=" $* " '!/^#/ && NF { if (index(groups, " " $2 " ")) print $1 }' "$top/scripts/packages.txt")
    stamp=$build/packages-$(printf '%s' "$wanted" | cksum | cut -d' ' -f1)
    [ -e "$stamp" ] && return
    missing=$(comm -23 <(sort <<<"$wanted") \
        <(dpkg-query -W -f='${Package} ${db:Status-Status}\n' 2>/dev/null | awk '$2 == "installed" { print $1 }' | sort))
    if [ -n "$missing" ]; then
        say "installing packages: $(tr '\n' ' ' <<<"$missing")"
        as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq </dev/null
        # shellcheck disable=SC2086 # one word a package
        install_packages $missing
    fi
    mkdir -p "$build"
    touch "$stamp"
}

# quietly LOG COMMAND...: shows the output only when the command fails.
quietly() {
    local log=$1
    shift
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n 60 "$log" >&2
        say "failed: $* (all output: $log)"
        return 1
    fi
}

# configure PRESET [CMAKE-ARGUMENT...]
configure() {
    mkdir -p "$top/build"
    quietly "$top/build/configure-$1.log" cmake -S "$top" --preset "$@"
}

# compile FOLDER [TARGET...]
compile() {
    local folder=$1
    shift
    quietly "$folder/build.log" cmake --build "$folder" ${1:+--target "$@"}
}
