# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
#
# For tests that source it, with $tavqz, $source and the fresh folder $data: serve MACHINE starts a
# server for a machine and sets $url; stop ends it, and fails unless it ended in order.
server=

serve() {
  mkdir -p "$data/$1"
  : >"$data/url"
  "$tavqz" --root "$source/tests/machines/$1" --data-dir "$data/$1" serve --port 0 \
    >"$data/url" 2>"$data/log" &
  server=$!
  for ((i = 0; i < 200; ++i)); do
    [ -s "$data/url" ] && break
    sleep 0.05
  done
  url=$(cat "$data/url")
  [ -n "$url" ] || {
    cat "$data/log" >&2
    return 1
  }
}

stop() {
  [ -n "$server" ] || return 0
  kill -TERM "$server"
  local status=0
  wait "$server" || status=$?
  server=
  return $status
}
