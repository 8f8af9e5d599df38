#!/bin/sh
# The package as an office gets it: built, installed with apt-get, started, removed.
# Arguments: the build folder and the version the program must tell.
set -eu
build=$1
versao=$2
if [ "$(id -u)" -ne 0 ]; then
  echo "PULADO: o teste do pacote instala no sistema e precisa ser root."
  exit 77
fi
if dpkg-query -W -f='${Status}' vexa-plus 2>/dev/null | grep -q "ok installed"; then
  echo "PULADO: vexa-plus já está instalado nesta máquina; o teste não o remove."
  exit 77
fi

cd "$build"
cpack -G DEB >/dev/null
deb=$(ls -t "$build"/pacotes/vexa-plus_"$versao"_*.deb | head -n 1)
dados=$(mktemp -d)
pid=""
limpa() {
  [ -n "$pid" ] && kill "$pid" 2>/dev/null || true
  apt-get remove -y --purge -o DPkg::Lock::Timeout=300 vexa-plus >/dev/null 2>&1 || true
  rm -rf "$dados"
}
trap limpa EXIT

apt-get install -y -qq -o DPkg::Lock::Timeout=300 "$deb" >/dev/null

falha() { echo "FALHOU: $*"; exit 1; }
/usr/bin/vexa --version | grep -q "^Vexa Plus $versao (compilado em " ||
  falha "vexa --version: $(/usr/bin/vexa --version)"
/usr/bin/vexa --help | grep -q "^Uso: vexa" || falha "vexa --help"
if /usr/bin/vexa --nada 2>/dev/null; then falha "uma opção desconhecida abriu o programa"; fi
for f in /usr/share/applications/org.vexaplus.VexaPlus.desktop \
         /usr/share/metainfo/org.vexaplus.VexaPlus.metainfo.xml \
         /usr/share/icons/hicolor/scalable/apps/org.vexaplus.VexaPlus.svg \
         /usr/share/man/man1/vexa.1.gz; do
  [ -e "$f" ] || falha "falta $f"
done

# The installed program starts on its own data folder and makes the day's backup there.
VEXA_DADOS=$dados QT_QPA_PLATFORM=offscreen /usr/bin/vexa >/dev/null 2>&1 &
pid=$!
i=0
until ls "$dados"/backup/*/VEXA.db >/dev/null 2>&1; do
  kill -0 "$pid" 2>/dev/null || falha "o programa instalado terminou na partida"
  i=$((i + 1))
  [ "$i" -le 300 ] || falha "o programa instalado não fez a cópia do dia"
  sleep 0.1
done
kill -0 "$pid" 2>/dev/null || falha "o programa instalado terminou"
kill "$pid"
wait "$pid" 2>/dev/null || true
pid=""

apt-get remove -y -qq --purge -o DPkg::Lock::Timeout=300 vexa-plus >/dev/null
[ ! -e /usr/bin/vexa ] || falha "/usr/bin/vexa ficou depois da remoção"
echo "Pacote $(basename "$deb") instalado, aberto e removido."
