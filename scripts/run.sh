#!/usr/bin/env bash
# Starts the program on the demo data set of this user, made once, on the embedded database.
set -euo pipefail
build=${1:-build}
data=${QUILLON_DEMO_DIR:-$HOME/.local/share/quillon/demo}
items=${QUILLON_DEMO_ITEMS:-20000}
if [ ! -f "$data/ZORDATA1.db" ]; then
  echo "Making the demo data set in $data ($items items)..."
  "$build/tools/quillon-demo-data" --path "$data" --items "$items" --save-settings
else
  # The settings may have been pointed elsewhere since: point them at the demo set again.
  mkdir -p "${XDG_CONFIG_HOME:-$HOME/.config}/quillon"
  cfg="${XDG_CONFIG_HOME:-$HOME/.config}/quillon/ZOR Settings.ini"
  grep -q '^DBName=ZORDATA1' "$cfg" 2>/dev/null && grep -q '^Provider=sqlite' "$cfg" || printf '[DATABASE]\nProvider=sqlite\nDBName=ZORDATA1\nServer=\nUserName=sa\nPassword=\n' > "$cfg"
fi
exe="$build/quillon"
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  shot="$data/menu.png"
  echo "No display: starting on a virtual one; a screenshot of the menu goes to $shot"
  QUILLON_SCREENSHOT="$shot" xvfb-run -a "$exe" "/DATAPATH=$data"
else
  "$exe" "/DATAPATH=$data"
fi
