#!/bin/bash
# Lays out a data root with what a build has made: lay-out-root.sh ROOT BUILD [LANGUAGE]
#
# Programs and words are refreshed; what lies in Parameters, Results and Archives is never touched.
#
# LANGUAGE (en, fr, de, it, es or nl) is what the program speaks from now on. The catalogues that are
# present decide that, so only one is placed. Without it the language stays as it was; in a new root it
# is English.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

[ $# -eq 2 ] || [ $# -eq 3 ] || die "usage: lay-out-root.sh ROOT BUILD [LANGUAGE]"
root=$1
build=$2
chosen=${3:-}
[ -z "$chosen" ] || is_language "$chosen" || die "no language $chosen (${all_languages[*]})"

lay_out_root "$root" "$project_dir/languages" "$build/languages" "$project_dir/docs/images" "$chosen"

for program in kelmoran kelmoran-rehearse; do
    found=$(find "$build" -type f -perm -u+x -name "$program" -print -quit)
    [ -n "$found" ] || { [ "$program" != kelmoran ] || die "no program in $build"; continue; }
    place_file "$found" "$root/bin/$program"
done
