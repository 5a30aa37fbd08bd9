#!/usr/bin/env bash
# Installs the Debian 12 packages the build, the tests and the demo need, only those missing.
set -euo pipefail

packages=(
    build-essential cmake pkg-config git
    qt6-base-dev qt6-base-dev-tools qt6-svg-dev libqt6svg6 qt6-image-formats-plugins
    libgl-dev fonts-dejavu-core
    libboost-dev libpoppler-qt6-dev liblnk-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    xvfb xdotool imagemagick
    dbus-daemon at-spi2-core python3-pyatspi
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
