#!/usr/bin/env bash
# Renders every drawing of this folder to ../pic, in its own size and in twice that for screens with
# a device pixel ratio of 2. Needs rsvg-convert (Debian: librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")"
for drawing in *.svg; do
    name=${drawing%.svg}
    size=32
    [[ $name == *_big ]] && size=64
    rsvg-convert -w "$size" -h "$size" "$drawing" -o "../pic/$name.png"
    rsvg-convert -w $((2 * size)) -h $((2 * size)) "$drawing" -o "../pic/$name@2x.png"
done
