#!/bin/bash
# Draws the icons of the desktop anew, from the program's own.
# Needs the Debian package librsvg2-bin.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

for size in 16 24 32 48 64 128; do
    rsvg-convert --width "$size" --height "$size" -o "icons/kelmoran-$size.png" \
        ../resources/source/Kelmoran_icone.svg
done
