#!/usr/bin/env bash
# Installs, from Debian's packages, everything that the build, the host and the tests use.
# Run as root (or with sudo available). Packages already present are left alone.
set -euo pipefail

packages=(
  cmake ninja-build g++ clang libclang-rt-14-dev pkg-config git ccache mold
  libboost-dev libicu-dev libcairo2-dev libpango1.0-dev librsvg2-dev libpugixml-dev
  liblcms2-dev libopencolorio-dev libcli11-dev nlohmann-json3-dev fonts-dejavu-core
  libgtest-dev libgmock-dev googletest libbenchmark-dev binutils
  libopenimageio-dev libimath-dev openimageio-tools python3
  qt6-base-dev libgl-dev xvfb xauth xdotool imagemagick x11-utils
  g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 wine64 libclang-14-dev
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: everything is installed"
  exit 0
fi

run() { if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi; }
echo "install-deps: installing ${missing[*]}"
run apt-get update -qq
run env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
