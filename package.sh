#!/bin/bash
# Installs what is missing, builds the program and makes its Debian package in build/package.
#
#   ./package.sh [--contact "NAME <ADDRESS>"] [--no-install]
#
#   --contact      who answers for the package where you install it
#   --no-install   install no packages
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

contact=()
install=yes

while [ $# -gt 0 ]; do
    case $1 in
    --contact)
        [[ ${2:-} == *?' <'?*'@'?*'>' ]] || die "--contact needs a name and an address: \"NAME <ADDRESS>\""
        contact=("-DKELMORAN_CONTACT=$2")
        shift
        ;;
    --no-install) install=no ;;
    -h | --help)
        sed -n '2,7s/^# \{0,1\}//p' "$0"
        exit 0
        ;;
    *) die "unknown option $1 (see --help)" ;;
    esac
    shift
done

[ "$install" = no ] || install_packages "${packages_build[@]}" "${packages_package[@]}"

say "building"
build=$project_dir/build/package
log=$build/build.log
mkdir -p "$build" || die "can't make $build"
build_project "$build" "$log" -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF "${contact[@]}" \
    || die "the build failed, see $log"

say "packing"
rm -f "$build"/*.deb
(cd "$build" && cpack) >>"$log" 2>&1 || { tail -n 20 "$log" >&2; die "no package was made, see $log"; }
package=$(find "$build" -maxdepth 1 -name '*.deb')
[ -n "$package" ] || die "no package was made, see $log"
say "the package is $package"
