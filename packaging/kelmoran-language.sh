#!/bin/bash
# Says which language Kelmoran speaks, or changes it from its next start on.
#
#   kelmoran-language [--root DIR] [en|fr|de|it|es|nl]
#
#   --root DIR  of the data in DIR instead of ~/.local/share/kelmoran
set -euo pipefail
prefix=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
share=$prefix/@CMAKE_INSTALL_DATADIR@/kelmoran

declare -A names=([en]=English [fr]=Français [de]=Deutsch [it]=Italiano [es]=Español [nl]=Nederlands)

die()
{
    printf 'kelmoran-language: %s\n' "$*" >&2
    exit 1
}

complain()
{
    printf 'kelmoran-language: %s\n' "$*" >&2
    exit 2
}

# shellcheck source=packaging/installed.sh
source "$share/installed.sh"

# The present one, or the one of the first start.
tell()
{
    local present language
    present=$(first_language)
    [ -n "$present" ] || present=$(root_language "$root") || present=en
    printf 'Kelmoran speaks %s (%s). It can speak:\n' "$present" "${names[$present]-}"
    for language in "${all_languages[@]}"; do
        printf '  %s  %s\n' "$language" "${names[$language]}"
    done
}

root=
wanted=
while [ $# -gt 0 ]; do
    case $1 in
    --root) [ -n "${2:-}" ] || complain "$1 needs a value" ;;&
    --root) root=$2 && shift ;;
    --root=?*) root=${1#--root=} ;;
    --version)
        echo "kelmoran-language @PROJECT_VERSION@"
        exit 0
        ;;
    -h | --help)
        sed -n '2,6s/^# \{0,1\}//p' "${BASH_SOURCE[0]}"
        exit 0
        ;;
    -*) complain "unknown option $1 (see --help)" ;;
    *)
        [ -z "$wanted" ] || complain "one language is enough, not $wanted and $1"
        is_language "$1" || complain "no language \"$1\": it is one of ${all_languages[*]}"
        wanted=$1
        ;;
    esac
    shift
done

choose_root
if [ -n "$wanted" ]; then
    lay_out "$wanted"
    echo "Kelmoran speaks $wanted (${names[$wanted]}) from its next start."
else
    tell
fi
