#!/usr/bin/env bash
# Corre los bancos de rendimiento (Google Benchmark) de una carpeta de compilación.
# Los que miden PostgreSQL usan un servidor descartable como las pruebas.
set -euo pipefail
raiz=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build-bench}
pgdir=$(mktemp -d /tmp/orvanta-pg.XXXXXX)
trap '"$raiz/scripts/pg_prueba.sh" detiene "$pgdir"' EXIT
export ORVANTA_PRUEBA_PG
ORVANTA_PRUEBA_PG=$("$raiz/scripts/pg_prueba.sh" inicia "$pgdir")
export QT_QPA_PLATFORM=offscreen
for b in "$raiz/$build"/bench/banco_*; do
  [ -x "$b" ] || continue
  echo "== $(basename "$b")"
  "$b" --benchmark_repetitions=${REPETICIONES:-10} --benchmark_report_aggregates_only=true
done
