#!/bin/bash
# Starts Kelmoran on the data of its user.
#
#   kelmoran [--root DIR] [--language XX]
#
#   --root DIR     work on the data in DIR instead of ~/.local/share/kelmoran
#   --language XX  speak en, fr, de, it, es or nl from now on
#   --version      print the version
set -euo pipefail
prefix=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
share=$prefix/@CMAKE_INSTALL_DATADIR@/kelmoran
programs=$prefix/@CMAKE_INSTALL_LIBEXECDIR@/kelmoran

# One line that says what went wrong, and out. Who started the program by its icon sees no line: a box.
die()
{
    printf 'kelmoran: %s\n' "$*" >&2
    if [ ! -t 2 ] && [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
        "$programs/kelmoran-notice" "Kelmoran can't start: $*" || true
    fi
    exit 1
}

complain()
{
    printf 'kelmoran: %s\n' "$*" >&2
    exit 2
}

# shellcheck source=packaging/installed.sh
source "$share/installed.sh"

root=
language=
while [ $# -gt 0 ]; do
    case $1 in
    --root | --language) [ -n "${2:-}" ] || complain "$1 needs a value" ;;&
    --root) root=$2 && shift ;;
    --root=?*) root=${1#--root=} ;;
    --language) language=$2 && shift ;;
    --language=?*) language=${1#--language=} ;;
    --version)
        echo "kelmoran @PROJECT_VERSION@"
        exit 0
        ;;
    -h | --help)
        sed -n '2,8s/^# \{0,1\}//p' "${BASH_SOURCE[0]}"
        exit 0
        ;;
    *) complain "unknown argument $1 (see --help)" ;;
    esac
    shift
done
[ -z "$language" ] || is_language "$language" \
    || complain "no language $language: it is one of ${all_languages[*]}"

choose_root
lay_out "$language"
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ] || die "there is no display for its window"
# The folder in which it runs is how the program knows its data root.
cd "$root/bin" || die "can't enter $root/bin"
exec "$programs/kelmoran"
