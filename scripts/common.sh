# What the commands of the project share. To be sourced from bash, with `set -euo pipefail` in force.
# shellcheck shell=bash

project_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
command_name=$(basename "$0")
# shellcheck source=scripts/packages.sh
source "$project_dir/scripts/packages.sh"
# shellcheck source=scripts/data-root.sh
source "$project_dir/scripts/data-root.sh"

: "${HOME:=$(getent passwd "$(id -u)" | cut -d: -f6)}"
export HOME

# Brings a catalogue up to the texts of the sources: LANGUAGE FILE. New ones stand there unfinished.
renew_catalogue()
{
    (cd "$project_dir" && /usr/lib/qt6/bin/lupdate -silent -locations none -no-obsolete \
        -source-language en -target-language "$1" src forms -ts "$2")
}

# One line that says what went wrong, and out.
die()
{
    printf '%s: %s\n' "$command_name" "$*" >&2
    exit 1
}

say()
{
    printf '== %s\n' "$*"
}

# Finds out how to become root, without waiting for a password where nobody can type one.
find_root()
{
    if [ "$(id -u)" -eq 0 ]; then
        as_root=()
    elif ! command -v sudo >/dev/null; then
        die "can't install $*: not root, and there is no sudo"
    elif sudo -n true 2>/dev/null; then
        as_root=(sudo -n)
    elif { : </dev/tty; } 2>/dev/null; then
        sudo -v || die "can't install $*: sudo refuses"
        as_root=(sudo -n)
    else
        die "can't install $*: not root, and sudo asks for a password"
    fi
}

is_installed()
{
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

apt_get()
{
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C \
        apt-get -o DPkg::Lock::Timeout=300 "$@" </dev/null
}

# Installs what is missing of the packages named. Touches no package list when all are there.
install_packages()
{
    local package log reason missing=()
    command -v dpkg-query >/dev/null \
        || die "packages are installed on Debian only; install them by hand and give --no-install"
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    find_root "${missing[*]}"
    say "installing ${missing[*]}"
    log=$(mktemp)
    if ! { apt_get update && apt_get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        reason=$(grep -E "^E:" "$log" | head -n 1 || true)
        [ -n "$reason" ] || reason=$(tail -n 1 "$log")
        rm -f "$log"
        die "can't install ${missing[*]}: $reason"
    fi
    rm -f "$log"
}

# Configures and builds with cmake: build_project DIR LOG [cmake options] -- [targets]
build_project()
{
    local dir=$1 log=$2 options=() targets=()
    shift 2
    while [ $# -gt 0 ] && [ "$1" != -- ]; do
        options+=("$1")
        shift
    done
    [ $# -eq 0 ] || shift
    [ $# -eq 0 ] || targets=(--target "$@")
    command -v cmake >/dev/null || die "cmake is missing"
    if command -v ccache >/dev/null; then
        # Two clones of one revision share what was compiled.
        export CCACHE_BASEDIR=$project_dir CCACHE_NOHASHDIR=1
        options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    mkdir -p "$dir" || die "can't make $dir"
    # A folder that came from elsewhere holds a cache that cmake refuses.
    if [ -f "$dir/CMakeCache.txt" ] \
        && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$project_dir" "$dir/CMakeCache.txt"; then
        rm -rf "$dir/CMakeCache.txt" "$dir/CMakeFiles"
    fi
    cmake -S "$project_dir" -B "$dir" -G Ninja "${options[@]}" >"$log" 2>&1 \
        || { tail -n 30 "$log" >&2; return 1; }
    cmake --build "$dir" "${targets[@]}" >>"$log" 2>&1 \
        || { grep -E -A5 'error|FAILED' "$log" | tail -n 40 >&2; return 1; }
}

# The files of the project, a line each: what git knows and does not ignore, or all where there is
# no git.
project_files()
{
    cd "$project_dir" || return 1
    if ! git -c safe.directory="$project_dir" ls-files --cached --others --exclude-standard \
        2>/dev/null; then
        find . -name .git -prune -o -path './build*' -prune -o -name __pycache__ -prune \
            -o -type f -printf '%P\n'
    fi | sort -u | while IFS= read -r file; do
        [ ! -f "$file" ] || printf '%s\n' "$file"
    done
}
