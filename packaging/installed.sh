# What the commands of an installation share. To be sourced from bash by `kelmoran` and
# `kelmoran-language`, which bring `prefix`, `share` and `die`.
# shellcheck shell=bash
# shellcheck source=scripts/data-root.sh
source "$share/data-root.sh"
words=$share/languages

# The administrator's file: /etc/kelmoran.conf for a program below /usr.
settings_file=${prefix%/usr}/etc/kelmoran.conf

# A line NAME=VALUE of that file; empty without one.
setting()
{
    [ ! -r "$settings_file" ] \
        || sed -nE "s/^[[:space:]]*$1=\"?([^\"]*[^\"[:space:]])\"?[[:space:]]*$/\1/p" "$settings_file" \
        | tail -n 1
}

# Sets `root`, where it isn't told by an option: the environment, the administrator's file, the home.
choose_root()
{
    if [ -n "$root" ]; then
        root=$(realpath -m -- "$root")
    elif [ -n "${KELMORAN_ROOT:-}" ]; then
        root=$KELMORAN_ROOT
        [[ $root == /* ]] || die "KELMORAN_ROOT has to begin with a /, not $root"
    else
        root=$(setting ROOT)
        [[ ${root:-/} == /* ]] || die "ROOT in $settings_file has to begin with a /, not $root"
    fi
    if [ -z "$root" ]; then
        HOME=${HOME:-$(getent passwd "$(id -u)" | cut -d: -f6)}
        root=$(home_root)
        [ -n "$root" ] || die "there is no home folder for the data; give --root DIR"
    fi
    # A folder that hands its group on is shared by that group.
    [ ! -g "$root" ] || umask 0007
}

# The language in which a data root begins: the administrator's, or that of the user's locale. Empty
# where one has been laid out already.
first_language()
{
    local language
    [ ! -e "$root/Languages/installed.txt" ] && ! root_language "$root" >/dev/null || return 0
    language=$(setting LANGUAGE)
    printf '%s' "${language:-$(locale_language)}"
}

# Lays out the data root, and sets it to a language: [LANGUAGE]
lay_out()
{
    local language=${1:-}
    [ -n "$language" ] || language=$(first_language)
    [ -z "$language" ] || is_language "$language" \
        || die "LANGUAGE in $settings_file has to be one of ${all_languages[*]}, not $language"
    lay_out_root "$root" "$words" "$words" "$words/images" "$language"
}
