#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the program need, when missing.
set -euo pipefail
packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libqt6sql6-psql libgl-dev
  libsqlite3-dev sqlite3 libssl-dev libcurl4-openssl-dev
  fonts-liberation2
  libgtest-dev libgmock-dev libbenchmark-dev
  postgresql xvfb xauth
  poppler-utils python3-aiosmtpd
  clang libclang-rt-dev
)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
