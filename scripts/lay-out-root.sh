#!/bin/bash
# Lays out a data root: lay-out-root.sh ROOT BUILD
#
# The five folders are made where they are missing. The program and the languages are refreshed; what
# lies in Parameters, Results and Archives is never touched.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

[ $# -eq 2 ] || die "usage: lay-out-root.sh ROOT BUILD"
root=$1
build=$2

mkdir -p "$root"/{bin,Languages/En,Parameters,Results,Archives} || die "can't make the folders in $root"

for program in kelmoran kelmoran-rehearse; do
    built=$(find "$build" -type f -perm -u+x -name "$program" -print -quit)
    [ -n "$built" ] || { [ "$program" != kelmoran ] || die "no program in $build"; continue; }
    install -m 755 "$built" "$root/bin/$program" || die "can't install $program into $root/bin"
done

if [ -n "$(ls -A "$project_dir/languages/en" 2>/dev/null)" ]; then
    cp -R "$project_dir/languages/en/." "$root/Languages/En/" || die "can't copy the languages"
fi
