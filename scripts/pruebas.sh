#!/usr/bin/env bash
# Corre todo el conjunto de pruebas (SQLite y PostgreSQL) sobre una carpeta de compilación.
#   scripts/pruebas.sh [carpeta_de_compilacion] [argumentos extra de ctest]
set -euo pipefail

raiz=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build}
shift || true

pgdir=$(mktemp -d /tmp/orvanta-pg.XXXXXX)
trap '"$raiz/scripts/pg_prueba.sh" detiene "$pgdir"' EXIT

export ORVANTA_PRUEBA_PG
ORVANTA_PRUEBA_PG=$("$raiz/scripts/pg_prueba.sh" inicia "$pgdir")
export QT_QPA_PLATFORM=offscreen
echo "PostgreSQL de pruebas: $ORVANTA_PRUEBA_PG"

cd "$raiz/$build"
ctest --output-on-failure -j "$(nproc)" "$@"
