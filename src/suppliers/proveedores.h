#pragma once
// Proveedores: a quién se le compra. La ficha de cada uno, el borrado (con sus compras y su
// cuenta) y la lista del panel "Proveedores".

#include "store/almacen.h"
#include "store/rutinas.h"

#include <QString>
#include <QVariantList>
#include <optional>

namespace orv {

struct DatosProveedor {
    QString nombre;      // txNombre: el contacto
    QString razonSocial; // txRazon
    QString domicilio;   // txDomicilio (columna Direccion)
    QString cPostal;     // txCPost
    QString telefono;    // txTel
    QString telefono2;   // txTel2
    QString cuit;        // txCuit
    QString email;       // txEMail
    QString banco;       // txtBanco (BancoNombre)
    QString cbu;         // txCBU
};

// La ficha tal como se muestra; nada si el proveedor ya no existe.
std::optional<DatosProveedor> LeeProveedor(const Almacen& a, qint64 idProveedor);

// La razón social (o el contacto) de otro proveedor con el mismo CUIT; nada si no hay o si el CUIT
// está vacío. La ficha avisa antes de grabar un CUIT repetido.
std::optional<QString> OtroProveedorConCuit(const Almacen& a, std::optional<qint64> idProveedor, const QString& cuit);

// Agrega (sin id) o modifica un proveedor con los campos tal cual se tipearon (vacío queda vacío).
// El nombre del banco se graba al agregar; al modificar queda el que estaba. Un campo que no cabe en
// su columna se rechaza con un aviso que lo nombra; un proveedor que ya no está, con "No encontrado!".
// El contacto vacío lo controla la ficha antes (no graba ni avisa). Devuelve el idProveedor.
qint64 GuardaProveedor(Almacen& a, std::optional<qint64> idProveedor, const DatosProveedor& d);

// Borra el proveedor con sus compras, los renglones de esas compras y su cuenta, en una sola
// transacción. El stock, la caja y los movimientos de stock de esas compras quedan; los artículos
// que lo nombran conservan su número.
void BorraProveedor(Almacen& a, qint64 idProveedor);

// La lista del panel por razón social; con texto, sólo los que lo contienen en la razón social o
// en el contacto, sin distinguir mayúsculas.
ConsultaConParametros ListaProveedores(const Almacen& a, const QString& nombre);

} // namespace orv
