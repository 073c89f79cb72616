#!/usr/bin/env bash
# Runs a command against a throw-away PostgreSQL cluster on a unix socket in a temporary
# folder; QUILLON_TEST_PG names it ("<socket folder>\<port>"). The cluster is stopped and
# removed on every exit.
set -euo pipefail
bindir=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1)
[ -x "$bindir/initdb" ] || { echo "PostgreSQL server binaries not found" >&2; exit 1; }
dir=$(mktemp -d /tmp/quillon-pg.XXXXXX)
port=$(( 20000 + RANDOM % 20000 ))
run_as=()
if [ "$(id -u)" -eq 0 ]; then
  chown postgres: "$dir"
  run_as=(runuser -u postgres --)
fi
cleanup() {
  "${run_as[@]}" "$bindir/pg_ctl" -D "$dir/data" -m immediate stop >/dev/null 2>&1 || true
  rm -rf "$dir"
}
trap cleanup EXIT INT TERM
"${run_as[@]}" "$bindir/initdb" -D "$dir/data" -U postgres --auth=trust -E UTF8 --locale=C.UTF-8 >"$dir/initdb.log" 2>&1 \
  || { cat "$dir/initdb.log" >&2; exit 1; }
"${run_as[@]}" "$bindir/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w -o "-k $dir -c listen_addresses='' -p $port -c fsync=off -c full_page_writes=off -c max_connections=200" start >/dev/null
export QUILLON_TEST_PG="$dir\\$port"
export QUILLON_TEST_PG_USER=postgres
"$@"
