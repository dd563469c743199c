# What lies in a data root, and where. To be sourced from bash by the commands of the project and by
# those of an installation, which bring their own `die`: one line that says what went wrong, and out.
# shellcheck shell=bash

# The languages of the program, in the order of its numbers.
# shellcheck disable=SC2034
all_languages=(en fr de it es nl)

is_language()
{
    local language
    for language in "${all_languages[@]}"; do
        [ "$language" != "$1" ] || return 0
    done
    return 1
}

# The language of the user's locale; English, if the program doesn't speak it.
locale_language()
{
    local locale=${LC_ALL:-${LC_MESSAGES:-${LANG:-}}}
    locale=${locale%%[_.@]*}
    if is_language "$locale"; then
        printf '%s' "$locale"
    else
        printf 'en'
    fi
}

# Where the data of a user lie if nobody says otherwise; empty for a user without a home.
home_root()
{
    local data=${XDG_DATA_HOME:-}
    # A relative one is to be ignored.
    [[ $data == /* ]] || data=${HOME:+$HOME/.local/share}
    printf '%s' "${data:+$data/kelmoran}"
}

# What the name of a file in a language begins with: ROOT LANGUAGE. From German on the folder and the
# file run into one another.
place_of()
{
    local LC_ALL=C # in a Turkish session the capital of i is another letter
    case $2 in
    en | fr) printf '%s/Languages/%s/' "$1" "${2^}" ;;
    *) printf '%s/Languages/%s' "$1" "${2^}" ;;
    esac
}

catalogue_of()
{
    printf '%skelmoran_%s.qm' "$(place_of "$1" "$2")" "$2"
}

# The language that a data root is set to: the first of those whose catalogue is there. Fails if there
# is none.
root_language()
{
    local language
    for language in "${all_languages[@]}"; do
        [ ! -e "$(catalogue_of "$1" "$language")" ] || { printf '%s' "$language"; return 0; }
    done
    return 1
}

# Puts a file in its place in one step: SOURCE TARGET. On a full disk the old one stays.
place_file()
{
    local reason
    if ! reason=$(cp -f -- "$1" "$2.new" 2>&1 && mv -f -- "$2.new" "$2" 2>&1); then
        rm -f -- "$2.new" 2>/dev/null || true
        die "can't write $2: ${reason##*: }"
    fi
}

# The same for many: PREFIX FILE... A prefix that ends in a / is a folder.
place_files()
{
    local prefix=$1 folder=${1%/*} file reason
    shift
    [ ! -e "$folder/.new" ] || rm -rf -- "$folder/.new" # of a run that was cut short
    if ! reason=$(mkdir -p -- "$folder/.new" 2>&1 && cp -f -t "$folder/.new" -- "$@" 2>&1); then
        rm -rf -- "$folder/.new" 2>/dev/null || true
        die "can't write into $folder: ${reason##*: }"
    fi
    if [ "$prefix" = "$folder/" ]; then
        mv -f -t "$folder" -- "$folder/.new"/* 2>/dev/null || die "can't write into $folder"
    else
        for file in "$folder/.new"/*; do
            mv -f -- "$file" "$prefix${file##*/}" 2>/dev/null || die "can't write $prefix${file##*/}"
        done
    fi
    rmdir -- "$folder/.new"
}

# Lays out a data root: lay_out_root ROOT WORDS BUILT IMAGES [LANGUAGE]
#
#   WORDS   templates and documents, in a folder for each language, and the style of the reports
#   BUILT   catalogues and instruction books
#   IMAGES  the stills of the documents; those with words in a folder for each language
#
# The folders are made where they are missing. The program's own files below Languages are refreshed
# when others have been installed, and when a language is chosen; what lies in Parameters, Results and
# Archives is never touched.
#
# The catalogues that are present decide what the program speaks. With LANGUAGE that one's is placed
# and the others are taken away; without it everything stays as it was.
lay_out_root()
{
    local root=$1 words=$2 built=$3 images=$4 chosen=${5:-}
    local languages=$root/Languages folder reason
    if ! reason=$(mkdir -p -- "$root"/{bin,Parameters,Results,Archives} "$languages"/{En,Fr} 2>&1); then
        die "can't make the data folders in $root: ${reason##*: }"
    fi
    for folder in "$root" "$root"/{bin,Parameters,Results,Archives,Languages}; do
        [ -w "$folder" ] || die "can't write into $folder: it is read-only, or belongs to somebody else"
    done

    # Which files were laid out the last time, by size and time.
    local stamp=$languages/installed.txt installed
    installed=$(find "$words" "$built" "$images" -type f \( -name '*.html' -o -name '*.qm' \
        -o -name '*.pdf' -o -name '*.css' -o -name '*.png' \) -printf '%p %s %T@\n' | LC_ALL=C sort)
    if [ -n "$chosen" ] || [ ! -f "$stamp" ] || [ "$(<"$stamp")" != "$installed" ]; then
        place_words "$root" "$words" "$built" "$images"
        [ -z "$chosen" ] || place_language "$root" "$built" "$chosen"
        # The last step: until then the root counts as not laid out.
        { printf '%s\n' "$installed" >"$stamp.new" && mv -f -- "$stamp.new" "$stamp"; } 2>/dev/null \
            || die "can't write $stamp"
    fi
}

# The program's own files: ROOT WORDS BUILT IMAGES
place_words()
{
    local root=$1 words=$2 built=$3 images=$4 languages=$1/Languages language file catalogue folder
    for language in "${all_languages[@]}"; do
        local documents=()
        for file in "$words/$language"/*.html "$built/Kelmoran_Instruction-book_$language.pdf"; do
            # The book is laid out as a PDF, and may not have been built.
            [[ ! -f $file || $file == */Kelmoran_Instruction-book_*.html ]] || documents+=("$file")
        done
        place_files "$(place_of "$root" "$language")" "${documents[@]}"
        place_files "$languages/Images/$language/" "$images/$language"/*.png
        catalogue=$(catalogue_of "$root" "$language")
        [ ! -e "$catalogue" ] || place_file "$built/kelmoran_$language.qm" "$catalogue"
    done
    place_files "$languages/Images/" "$images"/*.png
    for folder in "$languages" "$languages/En" "$languages/Fr"; do
        place_files "$folder/" "$words/kelmoran-report.css"
    done
}

# Sets a data root to a language: ROOT BUILT LANGUAGE. The new catalogue is there before the others go.
place_language()
{
    local root=$1 catalogue=$2/kelmoran_$3.qm chosen=$3 language
    [ -f "$catalogue" ] || die "there is no catalogue $catalogue"
    place_file "$catalogue" "$(catalogue_of "$root" "$chosen")"
    for language in "${all_languages[@]}"; do
        [ "$language" = "$chosen" ] || rm -f -- "$(catalogue_of "$root" "$language")" 2>/dev/null \
            || die "can't remove $(catalogue_of "$root" "$language")"
    done
}
