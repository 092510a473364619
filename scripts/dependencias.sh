#!/usr/bin/env bash
# Instala los paquetes de Debian 12 que Orvanta necesita para compilar, probar y ejecutarse.
# Idempotente: sólo llama a apt cuando falta algo.
set -euo pipefail

PAQUETES=(
  cmake ninja-build g++ ccache make pkg-config
  qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libqt6sql6-psql
  qt6-pdf-dev qt6-charts-dev qt6-serialport-dev libqt6opengl6-dev
  libsqlite3-dev libsodium-dev libcurl4-openssl-dev libzint-dev
  libkainjow-mustache-dev libfreexl-dev libxlsxwriter-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  postgresql postgresql-client
  python3-aiosmtpd openssl xvfb xauth poppler-utils
  fonts-dejavu-core
  zbar-tools
  gnumeric
)

faltan=()
for p in "${PAQUETES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    faltan+=("$p")
  fi
done

if [ ${#faltan[@]} -eq 0 ]; then
  exit 0
fi

echo "Instalando paquetes faltantes: ${faltan[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${faltan[@]}"
