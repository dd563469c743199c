#!/bin/bash
# Lays out a data root: lay-out-root.sh ROOT BUILD [LANGUAGE]
#
# The folders are made where they are missing. The program and what it has to say in its six languages
# are refreshed; what lies in Parameters, Results and Archives is never touched.
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
languages=$root/Languages
[ -z "$chosen" ] || is_language "$chosen" || die "no language $chosen (${all_languages[*]})"

# What the name of a file in a language begins with, below the root. From German on the folder and the
# file run into one another.
place_of()
{
    case $1 in
    en | fr) printf '%s/%s/' "$languages" "${1^}" ;;
    *) printf '%s/%s' "$languages" "${1^}" ;;
    esac
}

mkdir -p "$root"/{bin,Languages/En,Languages/Fr,Languages/Images,Parameters,Results,Archives} \
    || die "can't make the folders in $root"

for program in kelmoran kelmoran-rehearse; do
    found=$(find "$build" -type f -perm -u+x -name "$program" -print -quit)
    [ -n "$found" ] || { [ "$program" != kelmoran ] || die "no program in $build"; continue; }
    install -m 755 "$found" "$root/bin/$program" || die "can't install $program into $root/bin"
done

for language in "${all_languages[@]}"; do
    place=$(place_of "$language")
    for file in "$project_dir/languages/$language"/*.html; do
        name=$(basename "$file")
        case $name in
        Kelmoran_Instruction-book_*) continue ;; # the source of the PDF
        esac
        install -m 644 "$file" "$place$name" || die "can't install $name into $languages"
    done
    book=Kelmoran_Instruction-book_$language.pdf
    [ ! -f "$build/languages/$book" ] || install -m 644 "$build/languages/$book" "$place$book" \
        || die "can't install $book"
done
for folder in "$languages" "$languages/En" "$languages/Fr"; do
    install -m 644 "$project_dir/languages/kelmoran-report.css" "$folder" \
        || die "can't install the style of the reports"
done
install -m 644 "$project_dir"/docs/images/*.png "$languages/Images" || die "can't install the images"

if [ -n "$chosen" ]; then
    found=$build/languages/kelmoran_$chosen.qm
    [ -f "$found" ] || die "no catalogue for $chosen in $build"
    for language in "${all_languages[@]}"; do
        rm -f "$(place_of "$language")kelmoran_$language.qm"
    done
    install -m 644 "$found" "$(place_of "$chosen")kelmoran_$chosen.qm" \
        || die "can't install the catalogue of $chosen"
fi
