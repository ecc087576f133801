#!/usr/bin/env bash
# The look's screenshots in docs/: the grid as it fits 1280x720, 1920x1080,
# 3840x2160 and 3840x2160 at scale 2, over a wallpaper in light and dark, an
# open folder, the right-click menu and each section of the settings window.
# Each screen gets a fresh profile (nothing stored: the fitted defaults) and
# the desktop's wallpaper through GLib's keyfile settings backend. Needs a
# built tree (scripts/setup.sh).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${TILLMORA_BUILD_DIR:-$root/build}"
out="${1:-$root/docs}"
mkdir -p "$out"
work="$(mktemp -d)"
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$work"' EXIT

"$root/scripts/demo-apps.sh" "$work/share" 60 >/dev/null
# A fixed seed: the same wallpaper on every run, so the pictures change only when the look does.
convert -seed 7 -size 1920x1080 plasma:fractal -blur 0x3 "$work/wall.jpg"

start() { # WIDTH HEIGHT SCALE: a screen, a profile and the launcher on it
  [ -n "${display:-}" ] && stop
  display=":$((90 + RANDOM % 100))"
  profile="$work/p${display#:}"
  mkdir -p "$profile"/{home,config,data,cache,runtime} && chmod 700 "$profile/runtime"
  export HOME="$profile/home" XDG_CONFIG_HOME="$profile/config" XDG_DATA_HOME="$profile/data"
  export XDG_CACHE_HOME="$profile/cache" XDG_RUNTIME_DIR="$profile/runtime" DISPLAY="$display"
  export XDG_DATA_DIRS="$work/share:/usr/share" TILLMORA_APP_DIRS="$work/no-bundles" GSETTINGS_BACKEND=keyfile
  export QT_SCALE_FACTOR="$3"
  Xvfb "$display" -screen 0 "$1x$2x24" -nolisten tcp &
  xvfb=$!
  sleep 1
  gsettings set org.gnome.desktop.background picture-uri "file://$work/wall.jpg"
  gsettings set org.gnome.desktop.interface color-scheme "${scheme:-default}"
  "$build/bin/tillmora-app" >"$profile/log.txt" 2>&1 &
  app=$!
  for _ in $(seq 50); do xdotool search --onlyvisible --name '^Tillmora$' >/dev/null 2>&1 && break; sleep 0.2; done
  sleep 2
}
stop() { kill "$app" 2>/dev/null || true; wait "$app" 2>/dev/null || true; kill "$xvfb" 2>/dev/null || true; sleep 0.5; }
# Settings stay PNG (flat colours); the overlay over a wallpaper is a JPEG, 1280 wide.
shot() {
  case "$1" in
    settings-*) import -window root "${@:2}" "$out/$1.png"; echo "$out/$1.png" ;;
    *scale2*) import -window root "${@:2}" -quality 88 "$out/$1.jpg"; echo "$out/$1.jpg" ;;
    *) import -window root "${@:2}" -resize 1280x -quality 85 "$out/$1.jpg"; echo "$out/$1.jpg" ;;
  esac
}
# The centre of grid cell N on this screen, as the overlay lays it out (8 x 5).
cell() { python3 -c "
import sys; w,h,n=$1,$2,$3; m=max(40,w*0.06); top=max(24,h*0.04)+60
print(int(m+(n%8+0.5)*(w-2*m)/8), int(top+(n//8+0.5)*(h-top-70)/5))"; }

start 1280 720 1;   shot look-1280x720
start 1920 1080 1;  shot look-1920x1080
start 3840 2160 1;  shot look-3840x2160 -resize 1920x1080
# At scale 2 the icons are decoded at twice their size: a corner at full resolution.
start 3840 2160 2;  shot look-3840x2160-scale2-corner -crop 1600x900+0+0

scheme=prefer-light start 1920 1080 1; shot look-wallpaper-light
scheme=prefer-dark start 1920 1080 1;  shot look-wallpaper-dark

a="$work/share/applications"
id="$("$build/bin/tillmora" folder create "Games" "$a/demo.games.desktop" "$a/demo.gamepad.desktop" \
  "$a/demo.headphones.desktop" "$a/demo.music.desktop")"
sleep 1
slot="$("$build/bin/tillmora" layout --json | python3 -c "import json,sys; print(json.load(sys.stdin)['slots'].index('F:$id'))")"
read -r x y <<<"$(cell 1920 1080 "$slot")"; xdotool mousemove "$x" "$y" click 1; sleep 1; shot look-open-folder
xdotool key Escape; sleep 0.5
read -r x y <<<"$(cell 1920 1080 2)"; xdotool mousemove "$x" "$y" click 3; sleep 0.8; shot look-context-menu
xdotool key Escape; sleep 0.5

"$build/bin/tillmora" settings >/dev/null; sleep 1.5
window="$(xdotool search --onlyvisible --name 'Tillmora Settings' | head -1)"
eval "$(xdotool getwindowgeometry --shell "$window")"
i=0
for section in general appearance background apps folders; do
  xdotool mousemove "$((X + 100))" "$((Y + 38 + i * 40))" click 1; sleep 0.6
  shot "settings-$section" -crop "${WIDTH}x${HEIGHT}+${X}+${Y}"
  i=$((i + 1))
done
stop
