#!/usr/bin/env bash
# Takes the overlay screenshots in docs/ under a private Xvfb with the demo
# applications: first page, second page, a search, an open folder and a drag
# in progress. Needs a built tree (scripts/setup.sh).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
bin="${TILLMORA_BUILD_DIR:-$root/build}/bin/tillmora"
out="${1:-$root/docs}"
work="$(mktemp -d)"
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$work"' EXIT

"$root/scripts/demo-apps.sh" "$work/share" >/dev/null
mkdir -p "$work"/{home,config,data,runtime} && chmod 700 "$work/runtime"
export HOME="$work/home" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_RUNTIME_DIR="$work/runtime"
export XDG_DATA_DIRS="$work/share:/usr/share" TILLMORA_APP_DIRS="$work/no-bundles"
export DISPLAY=:"$((90 + RANDOM % 100))"
W=1600 H=1000
Xvfb "$DISPLAY" -screen 0 ${W}x${H}x24 -nolisten tcp &
sleep 1
# A wallpaper, so the frosted backdrop has something to show.
convert -size ${W}x${H} gradient:'#2b5876'-'#4e4376' \( -size ${W}x${H} radial-gradient:'#f7971e'-none \) \
  -compose over -composite "$work/wall.png"
display -window root "$work/wall.png" &
sleep 3

"$bin" >"$work/log.txt" 2>&1 &
for _ in $(seq 50); do xdotool search --onlyvisible --name '^Tillmora$' >/dev/null 2>&1 && break; sleep 0.2; done
sleep 2
shot() { import -window root "$out/$1.png"; echo "$out/$1.png"; }

# Cell centres of the 8 x 5 page on this screen (margins as the overlay lays them out).
cx() { echo $((96 + $1 * 176 + 88)); }
cy() { echo $((104 + $1 * 165 + 82)); }

shot overlay-first-page
xdotool key Next; sleep 1; shot overlay-second-page
xdotool key Prior; sleep 1
xdotool type --delay 60 "ca"; sleep 1; shot overlay-search
xdotool key Escape; sleep 0.5

a="$work/share/applications"
"$bin" folder create "Creative" "$a/demo.graphics.desktop" "$a/demo.camera.desktop" "$a/demo.music.desktop" \
  "$a/demo.photos.desktop" "$a/demo.videos.desktop" --slot 5 >/dev/null
sleep 1
xdotool mousemove "$(cx 5)" "$(cy 0)" click 1; sleep 1; shot overlay-folder
xdotool key Escape; sleep 0.5

xdotool mousemove "$(cx 3)" "$(cy 0)" mousedown 1; sleep 0.2
for step in 1 2 3 4 5 6 7 8; do
  xdotool mousemove $(( $(cx 3) + step * 28 )) $(( $(cy 0) + step * 18 )); sleep 0.05
done
xdotool mousemove $(( $(cx 5) - 60 )) "$(cy 1)"; sleep 0.8; shot overlay-drag
xdotool mouseup 1; sleep 0.5
