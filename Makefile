# Vexa Plus — build, run and test.
BUILD ?= build
PACOTES := cmake ninja-build g++ qt6-base-dev libqt6sql6-sqlite libqt6sql6-psql postgresql \
           qt6-qpa-plugins libgl-dev \
           libsqlite3-dev libgtest-dev libgmock-dev googletest libbenchmark-dev \
           fonts-liberation fonts-dejavu-core clang-format poppler-utils ccache \
           qt6-translations-l10n dpkg-dev file mdbtools-dev mdbtools \
           cups printer-driver-cups-pdf zlib1g-dev libreoffice-calc-nogui qt6-charts-dev \
           libqt6opengl6-dev
# What the package and its checks need besides the build.
PACOTES_DEB := lintian appstream desktop-file-utils librsvg2-bin
export QT_QPA_PLATFORM ?= offscreen

.PHONY: all deps build run test deb icones bench capturas ensaios format format-check clean

all: build

# Installs the Debian packages the build needs, only those that are missing.
deps:
	@faltam=""; for p in $(PACOTES); do \
	  dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q "ok installed" || faltam="$$faltam $$p"; \
	done; \
	if [ -n "$$faltam" ]; then \
	  echo "Instalando:$$faltam"; \
	  SUDO=""; [ "$$(id -u)" -ne 0 ] && SUDO=sudo; \
	  $$SUDO apt-get update -qq && DEBIAN_FRONTEND=noninteractive $$SUDO apt-get install -y -qq --no-install-recommends $$faltam; \
	fi

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja

build: deps $(BUILD)/build.ninja
	cmake --build $(BUILD)

# Starts the program in a window, with the simulated printer.
run: build
	@if [ -z "$$DISPLAY" ] && [ -z "$$WAYLAND_DISPLAY" ]; then \
	  echo "Sem tela gráfica: abrindo em uma tela virtual (xvfb-run)."; \
	  $(MAKE) --no-print-directory deps PACOTES="xvfb xauth"; \
	  QT_QPA_PLATFORM=xcb xvfb-run -a $(BUILD)/vexa; \
	else QT_QPA_PLATFORM= $(BUILD)/vexa; fi

test: build format-check
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2

# The Debian package in $(BUILD)/pacotes/, checked as Debian checks one.
deb: deps
	@$(MAKE) --no-print-directory deps PACOTES="$(PACOTES_DEB)"
	cmake -S . -B $(BUILD) -G Ninja >/dev/null
	cmake --build $(BUILD) --target vexa_app vexa_pacote_docs
	rm -f $(BUILD)/pacotes/*.deb
	cd $(BUILD) && cpack -G DEB
	appstreamcli validate --no-net $(BUILD)/pacote/org.vexaplus.VexaPlus.metainfo.xml
	desktop-file-validate pacote/org.vexaplus.VexaPlus.desktop
	lintian --fail-on error $(BUILD)/pacotes/vexa-plus_*.deb

# The icon's PNG sizes, drawn again from the SVG after it changes.
icones:
	@$(MAKE) --no-print-directory deps PACOTES=librsvg2-bin
	for n in 16 32 48 64 128 256; do \
	  rsvg-convert -w $$n -h $$n pacote/org.vexaplus.VexaPlus.svg -o pacote/icone-$$n.png; done

bench: build
	$(BUILD)/benchmarks/vexa_bench
	$(BUILD)/benchmarks/vexa_bench_simulador
	$(BUILD)/benchmarks/vexa_bench_sistema

# Short trials under faults; each prints its figures and fails when one went wrong.
ensaios: build
	$(BUILD)/tools/vexa_ensaios mortes 100
	$(BUILD)/tools/vexa_ensaios arquivos 10000
	$(BUILD)/tools/vexa_ensaios pedidos 1000
	$(BUILD)/tools/vexa_ensaios partidas $(BUILD)/vexa 50

capturas: build
	mkdir -p capturas
	$(BUILD)/tools/vexa_capturas capturas
	@echo "Capturas em capturas/"

format:
	find src tests benchmarks -name '*.cpp' -o -name '*.h' -o -name '*.c' | xargs clang-format -i

format-check: deps
	@find src tests benchmarks -name '*.cpp' -o -name '*.h' -o -name '*.c' | xargs clang-format --dry-run --Werror

clean:
	rm -rf $(BUILD)
