# Orvanta: las dos órdenes de siempre.
#   make run   instala lo que falte, compila y abre el programa sobre el almacén por omisión
#   make test  instala lo que falte, compila y corre todas las pruebas (SQLite y PostgreSQL)
# y además:
#   make bench      bancos de rendimiento (compilación optimizada)
#   make test-asan  pruebas bajo AddressSanitizer y UndefinedBehaviorSanitizer
#   make capturas   imágenes PNG de las pantallas en build/capturas/

CMAKE_GEN := -G Ninja
JOBS ?= $(shell nproc)

.PHONY: run test bench test-asan capturas dependencias compilar clean

dependencias:
	@bash scripts/dependencias.sh

build/build.ninja: | dependencias
	cmake -S . -B build $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Debug

compilar: dependencias build/build.ninja
	cmake --build build -j $(JOBS)

run: compilar
	./build/orvanta $(ARGS)

test: compilar
	bash scripts/pruebas.sh build

build-bench/build.ninja: | dependencias
	cmake -S . -B build-bench $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Release -DORVANTA_PRUEBAS=OFF

bench: dependencias build-bench/build.ninja
	cmake --build build-bench -j $(JOBS)
	bash scripts/bancos.sh build-bench

build-asan/build.ninja: | dependencias
	cmake -S . -B build-asan $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Debug -DORVANTA_ASAN=ON -DORVANTA_BENCH=OFF

test-asan: dependencias build-asan/build.ninja
	cmake --build build-asan -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  bash scripts/pruebas.sh build-asan

capturas: compilar
	cmake --build build -j $(JOBS) --target orvanta_capturas
	rm -rf build/capturas
	QT_QPA_PLATFORM=offscreen ./build/orvanta_capturas build/capturas
	for f in build/capturas/*.pdf; do pdftoppm -r 70 -png -f 1 -l 2 "$$f" "$${f%.pdf}" && rm -f "$$f"; done

clean:
	rm -rf build build-bench build-asan
