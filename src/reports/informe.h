#pragma once
// Motor de informes: una definición (*.rpt), una selección y un destino.
//
// Una definición es HTML con marcas Mustache. Empieza con un comentario Mustache que dice de
// dónde salen los datos y cómo es la página:
//
//   {{! fuente: SELECT ... FROM ConsultaCaja
//       titulo: Movimientos de caja
//       orden: Fecha, idCaja
//       moneda: Ingreso, Egreso
//       totales: Ingreso, Egreso
//       grupo: Cuenta
//       saldo: Ingreso, Egreso
//       orientacion: vertical | horizontal
//       pagina: A4 | Carta | Oficio }}
//
// El resto recibe: empresa, titulo, periodo, emitido, parametros.<nombre>, filas (cada fila con
// sus campos ya formateados, más par/impar), primera (la primera fila, para los datos de cabecera
// de un comprobante), hayFilas, cantidad, uno (cantidad es 1: "{{cantidad}} venta{{^uno}}s{{/uno}}"),
// totales.<campo> y emisor (el negocio, de la primera fila de Empresa: nombre, fantasia, domicilio,
// telefono, email, web, cuit, condicionIva, inicioActividades, cada uno con su hay_<campo>). Con "grupo: Campo", además grupos:
// cada grupo trae los campos de su primera fila, grupo (el valor del campo), filas, cantidad, uno,
// totales.<campo> y saldo (el del final del grupo). Con "saldo: Debe, Haber" cada fila trae saldo,
// la suma acumulada de Debe menos Haber desde el comienzo del grupo (o del informe). Cada campo trae también hay_<campo>,
// verdadero cuando no está vacío, para las secciones condicionales. Con "letras: Total" la fila trae
// además TotalEnLetras. Los valores se
// escapan para HTML. Encabezado (empresa, título, período) y pie (página n de m, fecha y hora) los
// dibuja el motor en cada página.

#include "store/almacen.h"
#include "store/dinero.h"

#include <QDateTime>
#include <QMap>
#include <QPageSize>
#include <QString>
#include <QStringList>
#include <QVariantList>

class QPagedPaintDevice;

namespace orv {

struct DefinicionInforme {
    QString ruta;
    QString fuente;
    QString titulo;
    QString orden;
    QStringList moneda;
    QStringList totales;
    QStringList letras; // importes que además van en letras: <campo>EnLetras
    QString grupo;      // campo por el que se agrupan las filas seguidas (la definición ordena por él)
    QStringList saldo;  // "Debe, Haber": saldo acumulado fila a fila (se reinicia en cada grupo)
    bool encabezado = true; // "encabezado: no" para los comprobantes, que traen el suyo
    bool horizontal = false;
    QPageSize::PageSizeId pagina = QPageSize::A4;
    QString plantilla; // el cuerpo Mustache, sin el comentario de cabecera
};

// Lee una definición. Lanza Aviso "Error en la lectura de la plantilla : " + ruta si el archivo no
// se puede leer o no dice su fuente.
DefinicionInforme LeeDefinicion(const QString& ruta);

// Ruta de una definición por su nombre: primero la copia de la carpeta de datos
// (<datos>/reportes), después las que trae el programa. Vacía si no está en ningún lado.
QString BuscaDefinicion(const QString& nombre, const QString& carpetaDatos);
// Carpetas donde se buscan, en orden.
QStringList CarpetasDeInformes(const QString& carpetaDatos);

// Selección: una condición SQL sobre las columnas de la fuente, con parámetros ligados.
struct Seleccion {
    QString condicion;
    QVariantList parametros;
    QString periodo;                    // texto para el encabezado ("Del 01/11/2026 al 30/11/2026")
    QMap<QString, QString> parametrosInforme; // como "Saldo;1234.50"
    Dinero saldoInicial; // de donde parte el saldo acumulado (el de antes del período)
};

// Un informe listo: el HTML del cuerpo y lo que va en cada página.
struct InformeArmado {
    QString empresa;
    QString titulo;
    QString periodo;
    QString emitido; // fecha y hora
    QString cuerpo;  // HTML
    qint64 filas = 0;
    bool encabezado = true;
    bool horizontal = false;
    QPageSize::PageSizeId pagina = QPageSize::A4;
};

InformeArmado ArmaInforme(const Almacen& a, const DefinicionInforme& d, const Seleccion& s, const QString& mascaraMoneda,
                          const QDateTime& ahora);

// Archivo según la extensión: .pdf (páginas con encabezado y pie), .html, .odt; .csv y .xlsx
// llevan las filas de la selección sin formato. Lanza Aviso si no se puede escribir o la
// extensión no es una de ésas. Devuelve la cantidad de páginas (PDF) o de filas.
int GuardaInforme(Almacen& a, const DefinicionInforme& d, const Seleccion& s, const QString& mascaraMoneda,
                  const QDateTime& ahora, const QString& archivo);

// Páginas con encabezado y pie sobre un dispositivo de pintura (PDF, impresora, vista previa).
// Devuelve la cantidad de páginas.
int PintaInforme(const InformeArmado& inf, QPagedPaintDevice& dispositivo);

} // namespace orv
