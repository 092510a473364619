#pragma once
// Datos locales: país, moneda, impuesto, cifras de los códigos, forma de los puntos, balanza del
// mostrador y los datos del negocio (tabla Empresa), tal como los muestra y guarda "Datos Locales".
//
// Los valores del país (Pais, MascaraMoneda, ClaveImpositiva y las cifras) se copian al estado de
// la aplicación sólo al arrancar: un cambio rige desde el próximo arranque. CoefIva, la forma de los
// puntos y la balanza se leen cada vez que se usan.

#include "app/configuracion.h"
#include "sales/balanza.h"
#include "store/almacen.h"

#include <QDate>
#include <QString>
#include <QStringList>

namespace orv {

// Países en mayúsculas, ARGENTINA primero y después los de siempre; ninguno tiene lógica propia.
const QStringList& Paises();
// Máscaras de moneda que se ofrecen; la primera es la de omisión.
const QStringList& MascarasMoneda();
// Nombres de la clave fiscal de cada país que se ofrecen; la primera es la de omisión.
const QStringList& ClavesImpositivas();

// Los valores de la configuración de la máquina, como texto (vacío: no está).
struct ValoresLocales {
    QString pais;
    QString mascaraMoneda;
    QString claveImpositiva;
    QString coefIva;
    QString cifrasRubro;
    QString cifrasArticulo;
    bool vipPorPeso = true; // "P": puntos por importe; si no, "C", por cantidad
    TextosBalanza balanza;
    friend bool operator==(const ValoresLocales&, const ValoresLocales&) = default;
};

// La fila del negocio; con `id` 0, todavía no hay ninguna.
struct DatosNegocio {
    qint64 id = 0;
    QString nombreEmpresa;
    QString nombreFantasia;
    QString direccion;
    QString cgoPostal;
    QString telefono;
    QString email;
    QString web;
    QString cuit;
    QString condicionIva;
    QDate inicioActividades; // nula: no se cargó
    friend bool operator==(const DatosNegocio&, const DatosNegocio&) = default;
};

inline const QString kMensajeCifras = QStringLiteral("Ingrese las cifras correctamente !!");
// Cifras que admite cada parte del código de un artículo.
inline constexpr int kCifrasMaximas = 10;

// Lo que muestra la pantalla al abrir. CoefIva sólo si es numérico; la forma de los puntos es por
// importe salvo que diga otra cosa que "P".
ValoresLocales LeeValoresLocales(const Configuracion& conf);
// La primera fila de Empresa (por idEmpresa), o una vacía con id 0.
DatosNegocio LeeDatosNegocio(const Almacen& a);

// "&Aceptar" de Datos Locales.
//   1. Todo se controla antes de escribir nada: las cifras (enteros de 1 a kCifrasMaximas, si no
//      kMensajeCifras), el impuesto (un porcentaje; vacío se guarda vacío), la balanza (sus
//      números, y la combinación que se pueda leer al escanear), los textos del negocio (largo de
//      su columna) y su CUIT (si la clave fiscal elegida es "CUIT"). Lo que no pasa lanza Aviso.
//   2. El negocio, en una transacción: agrega la fila si Empresa está vacía y si no cambia la primera.
//   3. La configuración: cifras, país, máscara y clave fiscal (estos tres sólo si no están vacíos),
//      forma de los puntos ("P" o "C"), CoefIva y la balanza.
// Devuelve el id de la fila del negocio.
qint64 GrabaDatosLocales(Almacen& a, const Configuracion& conf, const ValoresLocales& v, const DatosNegocio& n);

// "Configuracion de red": el número de esta terminal. Un entero de 32 bits (0 sirve); si no, el
// aviso de siempre y no se graba. Devuelve el número grabado.
qint32 GrabaIdRed(const Configuracion& conf, const QString& texto);
inline const QString kMensajeIdRed = QStringLiteral("Error, datos mal ingresados!. El Id debe ser numerico.");

} // namespace orv
