#!/bin/sh
# Draws every image of Icons/ anew from its source in source/, and most of them a second time, twice as
# fine: the toolkit takes "name@2x.png" where the desktop is scaled up.
# Needs the Debian packages librsvg2-bin, imagemagick and fonts-liberation.
set -eu
cd "$(dirname "$0")"
mkdir -p Icons

# draw SOURCE IMAGE ZOOM
draw() {
    case "$2" in
    # These two stand on whatever colour lies behind them and keep their transparency.
    Icons/Kelmoran_*) colours="-type TrueColorAlpha" ;;
    Icons/Noise*) colours="-alpha off -colorspace Gray -depth 8 -define png:color-type=0 -define png:bit-depth=8" ;;
    *) colours="-alpha off -define png:color-type=2" ;;
    esac
    # shellcheck disable=SC2086 # one word an option
    rsvg-convert --format=png --zoom="$3" "$1" |
        convert png:- $colours -strip -define png:exclude-chunks=date,time \
            -define png:compression-level=9 "$2"
}

for source in source/*.svg; do
    name=$(basename "$source" .svg)
    draw "$source" "Icons/$name.png" 1
    case "$name" in
    Kelmoran_icone | Noise*) ;; # large enough, and squares that stay sharp as they grow
    *) draw "$source" "Icons/$name@2x.png" 2 ;;
    esac
done
