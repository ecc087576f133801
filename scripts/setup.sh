#!/usr/bin/env bash
# Installs what the build and the tests need (Debian packages only), then
# configures and builds. Safe to re-run: installs only what is missing and the
# build is incremental.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${TILLMORA_BUILD_DIR:-$root/build}"

packages=(
  cmake ninja-build g++ pkg-config clang-tidy
  qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-declarative-dev-tools qt6-l10n-tools qt6-tools-dev
  qt6-qpa-plugins qt6-wayland
  qml6-module-qtquick qml6-module-qtquick-window qml6-module-qtquick-controls
  qml6-module-qtquick-layouts qml6-module-qtquick-templates qml6-module-qtqml-workerscript
  qml6-module-qttest qml6-module-qtqml
  libsqlite3-dev libarchive-dev libplist-dev libglib2.0-dev
  # GNOME's wallpaper and colour-scheme settings (read when installed; trying the backdrop)
  gsettings-desktop-schemas
  libxcb1-dev libxcb-keysyms1-dev libxcb-xinput-dev libx11-xcb-dev libevdev-dev
  libqt6svg6 qt6-image-formats-plugins fonts-dejavu-core fonts-noto-color-emoji
  xvfb xauth xdotool imagemagick x11-utils openbox libgl1-mesa-dri hicolor-icon-theme adwaita-icon-theme
  # the themes catalogue test: a certificate, an HTTPS server, a private loopback
  openssl python3 iproute2 util-linux shared-mime-info
)

# TILLMORA_FUZZ=ON: the fuzz targets instead (clang with libFuzzer), in
# build-fuzz unless TILLMORA_BUILD_DIR says otherwise.
fuzz="${TILLMORA_FUZZ:-OFF}"
if [ "$fuzz" = ON ]; then
  packages+=(clang libclang-rt-14-dev)
  build="${TILLMORA_BUILD_DIR:-$root/build-fuzz}"
fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done

if ((${#missing[@]})); then
  echo "setup: installing ${missing[*]}"
  sudo_cmd=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "setup: need root or sudo to install packages" >&2; exit 1; }
    sudo_cmd=(sudo)
  fi
  export DEBIAN_FRONTEND=noninteractive
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

if [ "$fuzz" = ON ]; then
  if [ ! -f "$build/build.ninja" ]; then
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="${TILLMORA_BUILD_TYPE:-RelWithDebInfo}" \
      -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DTILLMORA_FUZZ=ON
  fi
  # Only the fuzzers and the libraries they link, not the whole program.
  cmake --build "$build" -j"$(nproc)" --target fuzzers
  exit 0
fi

if [ ! -f "$build/build.ninja" ]; then
  cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="${TILLMORA_BUILD_TYPE:-RelWithDebInfo}"
fi
cmake --build "$build" -j"$(nproc)"
