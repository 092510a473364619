// Búsqueda por descripción del panel de artículos sobre 300 000 artículos, en SQLite y (si
// ORVANTA_PRUEBA_PG está definida) PostgreSQL: cada vuelta es una letra más tecleada en Text11 hasta
// ver la primera página de la grilla. Pisos: la misma sentencia suelta leyendo su primera página, y
// la búsqueda recorriendo la tabla sin el índice de texto.

#include "app/configuracion.h"
#include "app/estado.h"
#include "articles/consulta_articulos.h"
#include "articles/ui/panel_articulos.h"
#include "esquema_pg.h"
#include "maintenance/generador.h"
#include "reports/ui/salida_informes.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "store/reloj.h"
#include "widgets/grilla.h"

#include <QApplication>
#include <QLineEdit>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <list>
#include <memory>

namespace {

// Lo que se teclea, letra por letra: una palabra que está en uno de cada doce artículos hasta
// quedar en uno solo, un código que está en pocos y algo que no está en ninguno.
QStringList tecleado() {
    QStringList r;
    for (const char* t : {"galletitas 1234", "jamón 25", "501234", "qzx"}) {
        const QString s = QString::fromUtf8(t);
        for (int n = 1; n <= s.size(); ++n) r << s.left(n);
    }
    return r;
}

struct Escenario {
    std::unique_ptr<orv::Almacen> a;
    std::unique_ptr<orv::Configuracion> conf;
    orv::EstadoAplicacion estado;
    std::unique_ptr<orv::RelojFijo> reloj;
    std::unique_ptr<orv::SalidaInformes> salida;
    std::unique_ptr<orv::PanelArticulos> panel;
};

void prepara(Escenario& e, const QString& destino, const QString& carpeta, const char* motor) {
    e.a = orv::Almacen::abre(destino);
    orv::actualizaEsquema(*e.a);
    orv::OpcionesGenerador o;
    o.articulos = 300000;
    o.filasCaja = 1000;
    orv::generaAlmacenGrande(*e.a, o);
    if (e.a->esPostgreSQL()) e.a->ejecuta(QStringLiteral("ANALYZE"));
    e.conf = std::make_unique<orv::Configuracion>(carpeta, carpeta + QStringLiteral("/u.conf"));
    e.estado.IdRed = 1;
    e.estado.idUsuarioActual = 1;
    e.estado.idNivelActual = 1;
    e.reloj = std::make_unique<orv::RelojFijo>(QDateTime(QDate(2026, 11, 23), QTime(9, 0)));
    e.salida = std::make_unique<orv::SalidaInformes>(*e.a, *e.conf, e.estado, *e.reloj, nullptr);
    e.panel = std::make_unique<orv::PanelArticulos>(*e.a, e.estado, *e.conf, *e.reloj, *e.salida, orv::AccionesArticulos{});
    e.panel->resize(1280, 800);
    e.panel->carga();
    e.panel->show();
    QApplication::processEvents();
    std::fprintf(stderr, "%s: %lld artículos, índice de texto: %s\n", motor,
                 e.a->valor(QStringLiteral("SELECT count(*) FROM Articulos")).toLongLong(),
                 orv::HayIndiceDescripciones(*e.a) ? "sí" : "no");
}

// Lo que hace el panel con cada letra: arma la consulta y liga la grilla, que lee su primera página.
void panel(benchmark::State& s, Escenario& e) {
    const QStringList textos = tecleado();
    auto* text11 = e.panel->findChild<QLineEdit*>(QStringLiteral("Text11"));
    int i = 0;
    for (auto _ : s) {
        const QString t = textos.at(i++ % textos.size());
        text11->setText(t);
        e.panel->filtraDescripcion(t);
        benchmark::DoNotOptimize(e.panel->grilla()->modelo().rowCount());
    }
}

// Siempre el mismo texto: el peor caso de los que el índice no cubre (dos letras que no están en
// ninguna descripción obligan a leer la tabla entera).
void fijo(benchmark::State& s, Escenario& e, const QString& texto) {
    for (auto _ : s) {
        e.panel->filtraDescripcion(texto);
        benchmark::DoNotOptimize(e.panel->grilla()->modelo().rowCount());
    }
}

// La primera página leída con la sentencia suelta, por el camino dado.
void suelta(benchmark::State& s, Escenario& e, orv::CaminoTexto camino) {
    const QStringList textos = tecleado();
    int i = 0;
    for (auto _ : s) {
        const orv::ConsultaConParametros c = orv::ConsultaArticulosPorDescripcion(*e.a, textos.at(i++ % textos.size()), camino);
        QVariantList p = c.parametros;
        p << 256;
        QSqlQuery q = e.a->consulta(c.sql + QStringLiteral(" LIMIT ?"), p);
        int filas = 0;
        while (q.next()) ++filas;
        benchmark::DoNotOptimize(filas);
    }
}

void registra(Escenario& e, const QString& motor) {
    const auto nombre = [&motor](const char* que) { return (QStringLiteral("Articulos/Text11/") + motor + u'/' + QLatin1String(que)).toStdString(); };
    Mide(nombre("Panel"), [&e](benchmark::State& s) { panel(s, e); });
    Mide(nombre("Panel/DosLetrasSinResultado"),
         [&e](benchmark::State& s) { fijo(s, e, QStringLiteral("qz")); });
    Mide(nombre("SentenciaSuelta"),
         [&e](benchmark::State& s) { suelta(s, e, orv::CaminoTexto::Indice); });
    Mide(nombre("SentenciaSinIndice"),
         [&e](benchmark::State& s) { suelta(s, e, orv::CaminoTexto::Recorrido); });
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    std::list<Escenario> escenarios; // cada uno vive mientras corren sus mediciones
    return CorreBancos(
        argc, argv,
        [&](const QString& destino, const QString& carpeta, const char* motor) {
            prepara(escenarios.emplace_back(), destino, carpeta, motor);
            registra(escenarios.back(), QString::fromLatin1(motor));
        },
        // El esquema del servidor se borra al salir: antes se sueltan los paneles y las conexiones.
        Motores::Ambos, [&] { escenarios.clear(); });
}
