// Informes del catálogo tal como salen de "orvanta --informe" sobre un almacén fijo: el texto del PDF
// se compara entero con el esperado (tests/reports/esperado/), en los dos motores. Un número de
// comprobante cortado, un total que cambia o un singular mal puesto se ven como una línea distinta.
//
// Para rehacer un esperado después de un cambio buscado: ORVANTA_REHACER_ESPERADOS=1 y mirar la
// diferencia antes de guardarla.

#include "apoyo/base_prueba.h"
#include "apoyo_informes.h"
#include "store/actualizacion.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>

namespace orv {
namespace {

using namespace prueba;

// Un comercio con su emisor, dos clientes, tres comprobantes en dos días (uno a cuenta) y la caja de
// esos días.
const char* const kComercio = R"(
INSERT INTO Empresa (NombreEmpresa, Direccion, Cuit, CondicionIva, InicioActividades) VALUES
  ('Almacén Don Tito S.R.L.', 'San Martín 1450, Rosario', '30-71234567-1', 'IVA Responsable Inscripto', '2009-03-02');
INSERT INTO Vendedores (idVendedor, Nombre, Domicilio, Localidad) VALUES
  (20, 'Panadería La Espiga S.R.L.', 'Mitre 1', 'Rosario'), (21, 'Ana O''Neil', 'Sarmiento 99', 'Funes');
INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, Letra, PuntoDeVenta, EsComercial) VALUES (2, 'FACTURA A', 'A', '0001', 1);
INSERT INTO Comprobantes (idComprobante, Factura, idTipoComprobante, idVendedor, Fecha, Nombre, FormaPago, SubTotal,
  MontDescuento, ImporteNeto, PorcentajeIVA, ImporteIVA, Total, EsComercial, ImpresoFiscal) VALUES
  (1, 'A0001-00000001', 2, 20, '2026-11-05', 'Panadería La Espiga S.R.L.', 'CTA CTE', 1210, 0, 1000, 21, 210, 1210, 1, 'S'),
  (2, 'B0001-00000001', 1, 21, '2026-11-05', 'Ana O''Neil', 'EFVO', 1500, 0, 1239.67, 21, 260.33, 1500, 1, 'S'),
  (3, 'B0001-00000002', 1, 21, '2026-11-06', 'Ana O''Neil', 'EFVO', 100, 0, 82.64, 21, 17.36, 100, 1, 'S');
INSERT INTO Comisiones (idVendedor, idComprobante, Fecha, Tipo, Comision, Liquidacion) VALUES (20, 1, '2026-11-05', 'Factura', 1210, 0);
INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago) VALUES
  (1, 2, '2026-11-05', 'VENTA : B0001-00000001', 1500, 0, 'EFVO'), (1, 3, '2026-11-06', 'VENTA : B0001-00000002', 100, 0, 'EFVO'),
  (1, NULL, '2026-11-05', 'Flete de fiambres & lácteos refrigerados, octubre-noviembre', 0, 8350.4, 'EFVO')
)";

class InformesEsperados : public PorMotorAlDia {
protected:
    void prepara() override {
        almacen().ejecutaGuion(QString::fromUtf8(kComercio));
        // El programa llega al mismo almacén: el archivo de la carpeta, o el servidor por su dirección.
        if (base().motor() == Motor::PostgreSQL)
            QSettings(QDir(base().carpeta()).filePath("Orvanta.ini"), QSettings::IniFormat)
                .setValue("Configuracion/BaseDatos", base().destino());
    }

    // El texto del informe como lo deja el programa, sin la hora de emisión ni los blancos del final.
    QString textoDelPrograma(const QStringList& argumentos) {
        const QString pdf = QDir(base().carpeta()).filePath("salida.pdf");
        QProcess p;
        QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
        e.remove("ORVANTA_PRUEBA_PG");
        p.setProcessEnvironment(e);
        p.start(ORVANTA_PROGRAMA, QStringList{"--datos", base().carpeta(), "--informe"} + argumentos + QStringList{"--archivo", pdf});
        EXPECT_TRUE(p.waitForFinished(60000));
        EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
        static const QRegularExpression emitido(QStringLiteral("Emitido el \\d\\d/\\d\\d/\\d{4} \\d\\d:\\d\\d"));
        static const QRegularExpression blancos(QStringLiteral("\\s{2,}"));
        QStringList lineas;
        for (QString l : textoDePdf(pdf).split(u'\n')) {
            l.replace(emitido, QStringLiteral("Emitido el (fecha y hora)"));
            l = l.trimmed().replace(blancos, QStringLiteral("  "));
            if (!l.isEmpty()) lineas << l;
        }
        return lineas.join(u'\n') + u'\n';
    }
};

TEST_P(InformesEsperados, ElTextoDeCadaInformeEsElEsperado) {
    const struct {
        const char* esperado;
        QStringList argumentos;
    } casos[] = {
        {"caja_dia", {"listacajasimple.rpt", "--desde", "2026-11-05", "--hasta", "2026-11-05"}},
        {"comprobantes", {"lista_facturas.rpt", "--desde", "2026-11-01", "--hasta", "2026-11-30"}},
        {"deuda_clientes", {"saldotodosclientes.rpt", "--desde", "2026-11-01", "--hasta", "2026-11-30"}},
    };
    const QDir dir(QStringLiteral(ORVANTA_ESPERADOS));
    for (const auto& c : casos) {
        const QString archivo = dir.filePath(QString::fromLatin1(c.esperado) + ".txt");
        const QString texto = textoDelPrograma(c.argumentos);
        if (qEnvironmentVariableIsSet("ORVANTA_REHACER_ESPERADOS") && base().motor() == Motor::SQLite)
            escribeArchivo(archivo, texto.toUtf8());
        EXPECT_EQ(texto.toStdString(), leeArchivo(archivo).toStdString()) << c.esperado;
    }
}

ORV_AMBOS_MOTORES(InformesEsperados);

} // namespace
} // namespace orv
