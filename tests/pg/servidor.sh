#!/bin/sh
# A PostgreSQL server of the tests' own, in a folder of its own: started with "start DIR",
# stopped with "stop DIR". It listens on a Unix socket inside DIR alone (no TCP port), so that
# several runs on one machine never meet. initdb refuses to run as root: under root the server
# runs as the user "postgres" that the Debian package makes.
set -e
acao="$1"
pasta="$2"
[ -n "$acao" ] && [ -n "$pasta" ] || { echo "uso: $0 start|stop PASTA" >&2; exit 2; }
binarios=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
[ -x "$binarios/pg_ctl" ] || { echo "PostgreSQL não instalado (pacote postgresql)" >&2; exit 1; }

como() {
    if [ "$(id -u)" -eq 0 ]; then runuser -u postgres -- "$@"; else "$@"; fi
}

case "$acao" in
start)
    if [ -f "$pasta/dados/postmaster.pid" ] && como "$binarios/pg_ctl" -D "$pasta/dados" status >/dev/null 2>&1; then
        exit 0
    fi
    rm -rf "$pasta"
    mkdir -p "$pasta"
    [ "$(id -u)" -eq 0 ] && chown postgres "$pasta"
    como "$binarios/initdb" -D "$pasta/dados" -U vexa --auth=trust -E UTF8 --locale=C.UTF-8 >"$pasta/initdb.log" 2>&1 ||
        { cat "$pasta/initdb.log" >&2; exit 1; }
    como "$binarios/pg_ctl" -D "$pasta/dados" -l "$pasta/servidor.log" -w -t 60 \
        -o "-c listen_addresses='' -c unix_socket_directories='$pasta' -c fsync=off -c synchronous_commit=off -c full_page_writes=off -c max_connections=200" start >/dev/null ||
        { cat "$pasta/servidor.log" >&2; exit 1; }
    # The socket is open to everyone in the folder: the tests may run as another user.
    chmod 755 "$pasta"
    ;;
stop)
    [ -d "$pasta/dados" ] && como "$binarios/pg_ctl" -D "$pasta/dados" -m fast -w stop >/dev/null 2>&1 || true
    rm -rf "$pasta"
    ;;
*)
    echo "uso: $0 start|stop PASTA" >&2
    exit 2
    ;;
esac
