#!/bin/bash
# Makes the pictures of the book, the pages and the guides anew: make-stills.sh BUILD [LANGUAGE...]
#
# The real program is walked through on a virtual screen in each language. What shows words goes to
# docs/images/LANGUAGE, what a patient sees in a trial to docs/images. Look at the pictures before you
# commit them.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

[ $# -ge 1 ] || die "usage: make-stills.sh BUILD [LANGUAGE...]"
build=$1
shift
install_packages "${packages_screen[@]}" "${packages_stills[@]}"
[ $# -gt 0 ] || set -- trials "${all_languages[@]}"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# What to walk through, then what else to tell the robot.
walk()
{
    local name=$1 language=$2
    shift 2
    "$project_dir/scripts/lay-out-root.sh" "$work/$name" "$build" "$language"
    /usr/bin/python3 -B "$project_dir/tools/robot/stills.py" \
        --root "$work/$name" --language "$language" "$@" || die "no pictures of $name"
}

for name in "$@"; do
    if [ "$name" = trials ]; then
        walk trials en --pictures "$project_dir/docs/images" --trials
    else
        is_language "$name" || die "no language $name (${all_languages[*]})"
        walk "$name" "$name" --pictures "$project_dir/docs/images/$name"
    fi
done
