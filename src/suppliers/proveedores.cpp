#include "suppliers/proveedores.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>

namespace orv {

namespace {

// Los campos en el orden de sus columnas, con el largo de cada una y su nombre en la ficha.
struct Campo {
    const char* columna;
    int largo;
    const char* titulo;
    QString DatosProveedor::*dato;
};
constexpr Campo kCampos[] = {
    {"Nombre", 100, "Nombre Contacto", &DatosProveedor::nombre},
    {"RazonSocial", 100, "Razón Social", &DatosProveedor::razonSocial},
    {"Cuit", 30, "CUIT", &DatosProveedor::cuit},
    {"Telefono", 50, "Telefono", &DatosProveedor::telefono},
    {"Telefono2", 50, "Telefono (2)", &DatosProveedor::telefono2},
    {"email", 100, "e-mail", &DatosProveedor::email},
    {"Direccion", 100, "Domicilio", &DatosProveedor::domicilio},
    {"CBU", 50, "Nro Cta Bancaria", &DatosProveedor::cbu},
    {"CPostal", 10, "C.Postal", &DatosProveedor::cPostal},
    {"BancoNombre", 50, "Banco", &DatosProveedor::banco},
};
constexpr int kSinBanco = 9; // BancoNombre, el último: no se escribe al modificar

QString columnas(int hasta, const char* separador) {
    QString r;
    for (int i = 0; i < hasta; ++i)
        r += (i ? QString::fromLatin1(separador) : QString()) + QString::fromLatin1(kCampos[i].columna);
    return r;
}

} // namespace

std::optional<DatosProveedor> LeeProveedor(const Almacen& a, qint64 idProveedor) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT ") + columnas(std::size(kCampos), ", ") +
                                 QStringLiteral(" FROM Proveedores WHERE idProveedor = ?"),
                             {idProveedor});
    if (!q.next()) return std::nullopt;
    DatosProveedor d;
    for (int i = 0; i < int(std::size(kCampos)); ++i) d.*kCampos[i].dato = q.value(i).toString();
    return d;
}

std::optional<QString> OtroProveedorConCuit(const Almacen& a, std::optional<qint64> idProveedor, const QString& cuit) {
    if (cuit.trimmed().isEmpty()) return std::nullopt;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT COALESCE(NULLIF(RazonSocial, ''), Nombre) FROM Proveedores "
                                            "WHERE Cuit = ? AND idProveedor <> ? ORDER BY idProveedor LIMIT 1"),
                             {cuit.trimmed(), idProveedor.value_or(0)});
    if (!q.next()) return std::nullopt;
    return q.value(0).toString();
}

qint64 GuardaProveedor(Almacen& a, std::optional<qint64> idProveedor, const DatosProveedor& d) {
    // 1. Cada campo en su columna.
    for (const Campo& c : kCampos) ExigeTexto(d.*c.dato, c.largo, QString::fromUtf8(c.titulo));
    QVariantList valores;
    for (const Campo& c : kCampos) { // vacío se graba vacío, no nulo
        const QString& v = d.*c.dato;
        valores << (v.isNull() ? QStringLiteral("") : v);
    }
    // 2. Alta con todos los campos, o modificación sin el banco.
    if (!idProveedor)
        return a.inserta(QStringLiteral("INSERT INTO Proveedores (") + columnas(std::size(kCampos), ", ") +
                             QStringLiteral(") VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                         valores, QStringLiteral("idProveedor"));
    valores.removeLast();
    valores << *idProveedor;
    if (a.ejecuta(QStringLiteral("UPDATE Proveedores SET ") + columnas(kSinBanco, " = ?, ") +
                      QStringLiteral(" = ? WHERE idProveedor = ?"),
                  valores) == 0)
        throw Aviso(QStringLiteral("No encontrado!"));
    return *idProveedor;
}

void BorraProveedor(Almacen& a, qint64 idProveedor) {
    Transaccion t(a);
    for (const char* tabla : {"Compras", "DetCompras", "CtaProve", "Proveedores"})
        a.ejecuta(QStringLiteral("DELETE FROM %1 WHERE idProveedor = ?").arg(QLatin1String(tabla)), {idProveedor});
    t.confirmar();
}

ConsultaConParametros ListaProveedores(const Almacen& a, const QString& nombre) {
    const QString orden = QStringLiteral(" ORDER BY RazonSocial");
    if (nombre.isEmpty()) return {QStringLiteral("SELECT * FROM Proveedores") + orden, {}};
    const QString condicion = QStringLiteral("(") + CondicionContiene(a, QStringLiteral("RazonSocial")) +
                              QStringLiteral(" OR ") + CondicionContiene(a, QStringLiteral("Nombre")) + QStringLiteral(")");
    return {QStringLiteral("SELECT * FROM Proveedores WHERE ") + condicion + orden, {nombre, nombre}};
}

} // namespace orv
