#!/usr/bin/env bash
# Servidor PostgreSQL descartable para las pruebas: initdb en una carpeta temporal, como
# usuario sin privilegios, escuchando sólo en un socket Unix dentro de esa carpeta.
#
#   scripts/pg_prueba.sh inicia DIR   -> crea y arranca; imprime el URI de conexión
#   scripts/pg_prueba.sh detiene DIR  -> detiene y borra la carpeta
set -euo pipefail

accion=${1:?uso: pg_prueba.sh inicia|detiene DIR}
dir=${2:?falta la carpeta}

bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1)
[ -x "$bin/initdb" ] || { echo "No se encontró initdb de PostgreSQL (instale el paquete postgresql)" >&2; exit 1; }

# initdb se niega a correr como root: en ese caso se usa el usuario del sistema 'postgres'.
como() {
  if [ "$(id -u)" -eq 0 ]; then
    runuser -u postgres -- "$@"
  else
    "$@"
  fi
}

case "$accion" in
  inicia)
    mkdir -p "$dir"
    if [ "$(id -u)" -eq 0 ]; then chown postgres "$dir"; fi
    chmod 755 "$dir"
    como "$bin/initdb" -D "$dir/datos" -U orvanta --auth=trust -E UTF8 --locale=C.UTF-8 >"$dir/initdb.log" 2>&1 \
      || { cat "$dir/initdb.log" >&2; exit 1; }
    como "$bin/pg_ctl" -D "$dir/datos" -l "$dir/servidor.log" -w -t 60 \
      -o "-c listen_addresses= -k $dir -c fsync=off -c synchronous_commit=off -c full_page_writes=off -c max_connections=200" \
      start >/dev/null || { cat "$dir/servidor.log" >&2; exit 1; }
    como "$bin/createdb" -h "$dir" -U orvanta orvanta_prueba
    echo "postgresql://orvanta@/orvanta_prueba?host=$dir"
    ;;
  detiene)
    if [ -d "$dir/datos" ]; then
      como "$bin/pg_ctl" -D "$dir/datos" -m immediate -w stop >/dev/null 2>&1 || true
    fi
    rm -rf "$dir"
    ;;
  *)
    echo "acción desconocida: $accion" >&2; exit 2 ;;
esac
