#!/bin/sh
# Draws every image of Icons/ anew from its source in source/.
# Needs the Debian packages librsvg2-bin, imagemagick and fonts-liberation.
set -eu
cd "$(dirname "$0")"
mkdir -p Icons

for source in source/*.svg; do
    image="Icons/$(basename "$source" .svg).png"
    case "$image" in
    # These two stand on whatever colour lies behind them and keep their transparency.
    Icons/Kelmoran_*) colours="-type TrueColorAlpha" ;;
    Icons/Noise*) colours="-alpha off -colorspace Gray -depth 8 -define png:color-type=0 -define png:bit-depth=8" ;;
    *) colours="-alpha off -define png:color-type=2" ;;
    esac
    # shellcheck disable=SC2086 # one word an option
    rsvg-convert --format=png "$source" |
        convert png:- $colours -strip -define png:exclude-chunks=date,time \
            -define png:compression-level=9 "$image"
done
