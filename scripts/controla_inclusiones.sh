#!/usr/bin/env bash
# Las dependencias de las pantallas van en un solo sentido: ninguna pantalla (src/*/ui/, salvo las
# del arranque en src/app/ui/) ni pieza compartida (src/widgets/) incluye la ventana principal
# (shell/), y las piezas compartidas no incluyen pantallas. Sale con error y nombra cada inclusión
# que rompe la regla.
set -uo pipefail
src=$(cd "$(dirname "$0")/../src" && pwd)
cd "$src"
mal=$( {
  grep -rnE '^[[:space:]]*#[[:space:]]*include[[:space:]]*[<"]shell/' --include='*.h' --include='*.cpp' \
    $(ls -d */ui 2>/dev/null | grep -v '^app/ui$') widgets
  grep -rnE '^[[:space:]]*#[[:space:]]*include[[:space:]]*[<"][a-z]+/ui/' --include='*.h' --include='*.cpp' widgets
} 2>/dev/null)
if [ -n "$mal" ]; then
  echo "Inclusiones en sentido contrario:"
  echo "$mal"
  exit 1
fi
echo "Dependencias en un solo sentido."
