#!/bin/bash
# Installs what the program needs, builds it, lays out its data root and starts it.
# Where there is no display, a scripted assessor and patient carry out one attention test on a virtual
# screen instead.
#
#   ./run.sh [--root DIR] [--language XX] [--no-install]
#
#   --root DIR     keep the data in DIR instead of ~/.local/share/kelmoran
#   --language XX  speak en, fr, de, it, es or nl from now on
#   --no-install   install no packages
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

root=
language=
install=yes

usage()
{
    sed -n '2,10s/^# \{0,1\}//p' "$project_dir/run.sh"
}

while [ $# -gt 0 ]; do
    case $1 in
    --root)
        [ -n "${2:-}" ] || die "--root needs a folder"
        root=$(realpath -m -- "$2")
        shift
        ;;
    --root=?*) root=$(realpath -m -- "${1#--root=}") ;;
    --language)
        language=${2:-}
        is_language "$language" || die "--language needs one of ${all_languages[*]}"
        shift
        ;;
    --language=*)
        language=${1#--language=}
        is_language "$language" || die "--language needs one of ${all_languages[*]}"
        ;;
    --no-install) install=no ;;
    -h | --help)
        usage
        exit 0
        ;;
    *) die "unknown option $1 (see --help)" ;;
    esac
    shift
done

has_display()
{
    [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]
}

packages=("${packages_build[@]}" "${packages_run[@]}")
has_display || packages+=("${packages_screen[@]}")
[ "$install" = no ] || install_packages "${packages[@]}"

say "building"
build=$project_dir/build/run
mkdir -p "$build" || die "can't make $build"
build_project "$build" "$build/build.log" -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF -- \
    kelmoran kelmoran-rehearse kelmoran_words \
    || die "the build failed, see $build/build.log"

if has_display; then
    root=${root:-$(home_root)}
else
    root=${root:-${XDG_STATE_HOME:-$HOME/.local/state}/kelmoran/demo-$(date +%Y%m%d-%H%M%S)}
fi
"$project_dir/scripts/lay-out-root.sh" "$root" "$build" ${language:+"$language"} || exit 1
say "the data root is $root"

if has_display; then
    cd "$root/bin"
    exec ./kelmoran
fi
say "no display: a scripted assessor and patient carry out one attention test"
export PYTHONDONTWRITEBYTECODE=1
exec /usr/bin/python3 "$project_dir/tools/robot/demo.py" --root "$root"
