#!/usr/bin/env bash
# Makes the drawings of docs/motion.md anew.
#   tools/trevik-scope/drawings.sh [TREVIK_SCOPE]
set -euo pipefail
cd "$(dirname "$0")/../.."
scope=${1:-build/release/trevik-scope}

draw() {
    name=$1
    shift
    "$scope" "$@" --svg "docs/images/scope-$name.svg" >/dev/null
}

draw t T-position --distance 10000 --max 20000 --accel 200 --decel 200
draw s S-position --distance 10000 --max 20000 --accel 200 --decel 200 --s-accel 60 --s-decel 60
draw s-whole S-position --distance 10000 --max 20000 --accel 200 --decel 200
draw short T-position --distance 2000 --max 20000 --accel 200 --decel 200
draw long-decel T-position --distance 10000 --max 20000 --accel 100 --decel 400
draw short-s S-position --distance 2000 --max 20000 --accel 100 --decel 500
draw change T-position --distance 20000 --max 20000 --change-at 300 --change-distance 4000
draw online T-position --distance 20000 --max 20000 --change-at 300 --change-distance 15000 --change-max 40000
draw velocity T-velocity --max 20000 --accel 100 --speed-at 250 --speed 5000 --speed-time 100 --fix-range 20000 \
    --stop-at 500 --stop-time 200
draw velocity-unfixed T-velocity --max 20000 --accel 100 --speed-at 250 --speed 5000 --speed-time 100 --for 500
draw restart T-position --distance 20000 --max 20000 --stop-at 300 --stop-time 100 --restart-at 700
draw home home --home-mode 1 --max 5000 --home-switch 3000 3600
draw home-index home --home-mode 4 --max 5000 --home-switch 3000 3600 --index 50 400
draw search home-search --max 5000 --distance 300 --home-switch -3600 -3000 --plus-limit 2000
draw handwheel handwheel --counts 500 --turn 1000 --ratio 3
