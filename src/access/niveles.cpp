#include "access/niveles.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/esquema.h"
#include "store/rutinas.h"

#include <QSqlQuery>

namespace orv {

QString tituloPestania(Pestania p) {
    switch (p) {
    case Pestania::IngresoCambios: return QStringLiteral("Ingreso/Cambios");
    case Pestania::Eliminar: return QStringLiteral("Eliminar");
    case Pestania::Visualizar: return QStringLiteral("Visualizar");
    case Pestania::Otros: return QStringLiteral("Otros");
    }
    return {};
}

const std::vector<Permiso>& Permisos() {
    using P = Pestania;
    auto s = [](const char* t) { return QString::fromUtf8(t); };
    static const std::vector<Permiso> tabla = {
        {s("VeArticulos"), s("Articulos"), P::Visualizar, {s("botPrincipal0")}},
        {s("VeClientes"), s("Clientes"), P::Visualizar, {s("botPrincipal1")}},
        {s("VeCaja"), s("Movimientos de Caja"), P::Visualizar, {s("botPrincipal2")}},
        {s("VeVentas"), s("Ventas"), P::Visualizar, {s("botPrincipal3")}},
        {s("VeProveedores"), s("Proveedores"), P::Visualizar, {s("botPrincipal7")}},
        {s("VeInformes"), s("Ingresar a informes / Estadisticas"), P::Visualizar, {s("botPrincipal4")}},
        {s("VeExportar"), s("Ingresar a Exportar datos"), P::Visualizar, {s("botPrincipal5")}},
        {s("PermEnviaMail"), s("Permite enviar e-mails"), P::Otros, {s("botPrincipal5")}},
        {s("VeUtilidades"), s("Ingresar a Utilidades"), P::Visualizar, {s("botPrincipal6")}},
        {s("VeUsuarios"), s("Usuarios"), P::Visualizar, {s("Label37")}},
        {s("VeRubros"), s("Rubros"), P::Visualizar, {s("Command6")}},
        {s("VePlanCuentas"), s("Plan de cuentas"), P::Visualizar, {s("Command36")}},
        {s("VeCompras"), s("Compras"), P::Visualizar, {s("Command44"), s("cmdNuevaCompra")}},
        {s("VeSaldoProveedores"), s("Saldo de Proveedores"), P::Visualizar, {s("Command39")}},
        {s("VeSaldoClientes"), s("Cuenta corriente Clientes"), P::Visualizar, {s("Command9")}},
        {s("VePreCostos"), s("Precios de costo"), P::Visualizar, {}},
        {s("NueArticulo"), s("Articulos"), P::IngresoCambios, {s("Command1"), s("Command3")}},
        {s("NueCliente"), s("Clientes"), P::IngresoCambios, {s("Command12"), s("Command10")}},
        {s("NueProveedor"), s("Proveedores"), P::IngresoCambios, {s("Command40"), s("Command42")}},
        {s("NueCaja"), s("Movimientos de Caja"), P::IngresoCambios, {s("Command7"), s("Command14")}},
        {s("NueStock"), s("Stock"), P::IngresoCambios, {s("Command5"), s("Command52")}},
        {s("BorrArticulo"), s("Articulos"), P::Eliminar, {s("Command2")}},
        {s("BorrCliente"), s("Clientes"), P::Eliminar, {s("Command11")}},
        {s("BorrProveedor"), s("Proveedores"), P::Eliminar, {s("Command41")}},
        {s("BorrCaja"), s("Movimientos de Caja"), P::Eliminar, {s("Command13")}},
        {s("BorrStock"), s("Movimientos de Stock"), P::Eliminar, {s("Label31")}},
        {s("BorrTodosLosDatos"), s("Poder purgar datos"), P::Eliminar, {s("Label29")}},
        {s("PermZonas"), s("Administrar Zonas"), P::Otros, {s("label33")}},
        {s("PermBackup"), s("Permite hacer backup"), P::Otros, {s("Label47"), s("lblRestaurar")}},
        {s("PermAjustaNumeradores"), s("Ajustar numeración de comprobantes"), P::Otros, {s("Label39")}},
        {s("PermCambioPrecios"), s("Cambio de Precios"), P::Otros, {s("Command37")}},
        {s("CamPreVentaArticulos"), s("Precio en la venta de artículos"), P::Otros, {}},
        {s("SoloPOS"), s("Nivel solo operador de P.O.S."), P::Otros, {}},
        // Se editan y se guardan, pero a propósito no apagan nada.
        {s("NueUsuario"), s("Usuarios"), P::IngresoCambios, {}},
        {s("NueCompra"), s("Compras"), P::IngresoCambios, {}},
        {s("NueVenta"), s("Ventas"), P::IngresoCambios, {}},
        {s("BorrUsuario"), s("Usuarios"), P::Eliminar, {}},
        {s("BorrCompra"), s("Compras"), P::Eliminar, {}},
        {s("BorrVenta"), s("Ventas"), P::Eliminar, {}},
    };
    return tabla;
}

const Permiso* BuscaPermiso(const QString& columna) {
    for (const Permiso& p : Permisos())
        if (p.columna.compare(columna, Qt::CaseInsensitive) == 0) return &p;
    return nullptr;
}

const QStringList& OrdenAplicaNiveles() {
    static const QStringList orden = {
        QStringLiteral("VeArticulos"),     QStringLiteral("VeClientes"),         QStringLiteral("VeCaja"),
        QStringLiteral("VeVentas"),        QStringLiteral("VeProveedores"),      QStringLiteral("VeInformes"),
        QStringLiteral("VeExportar"),      QStringLiteral("VeUtilidades"),       QStringLiteral("PermZonas"),
        QStringLiteral("PermBackup"),      QStringLiteral("BorrTodosLosDatos"),  QStringLiteral("BorrStock"),
        QStringLiteral("VeUsuarios"),      QStringLiteral("PermAjustaNumeradores"), QStringLiteral("NueProveedor"),
        QStringLiteral("BorrProveedor"),   QStringLiteral("VeCompras"),          QStringLiteral("VeSaldoProveedores"),
        QStringLiteral("NueCliente"),      QStringLiteral("BorrCliente"),        QStringLiteral("VeSaldoClientes"),
        QStringLiteral("NueArticulo"),     QStringLiteral("BorrArticulo"),       QStringLiteral("NueStock"),
        QStringLiteral("VeRubros"),        QStringLiteral("PermCambioPrecios"),  QStringLiteral("PermEnviaMail"),
        QStringLiteral("NueCaja"),         QStringLiteral("BorrCaja"),           QStringLiteral("VePlanCuentas"),
    };
    return orden;
}

QStringList ControlesSinPermiso(const Almacen& a, int idNivel) {
    QStringList apagar;
    for (const QString& columna : OrdenAplicaNiveles())
        if (!TieneNivel(a, idNivel, columna)) apagar += BuscaPermiso(columna)->controles;
    return apagar;
}

bool ModoPOS(const Almacen& a, int idNivel) {
    return TieneNivel(a, idNivel, QStringLiteral("soloPOS")) && !TieneNivel(a, idNivel, QStringLiteral("usuarioSuper"));
}

namespace {

// Otro nivel (distinto de `excepto`) con ese nombre, sin distinguir mayúsculas.
bool nombreTomado(const Almacen& a, const QString& nombre, qint64 excepto) {
    for (const NivelEnLista& n : ListaNiveles(a))
        if (n.idNivel != excepto && n.nombre.trimmed().compare(nombre.trimmed(), Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

} // namespace

std::vector<NivelEnLista> ListaNiveles(const Almacen& a) {
    std::vector<NivelEnLista> lista;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idNivel, Nombre FROM Niveles ORDER BY idNivel"));
    while (q.next()) lista.push_back({q.value(0).toLongLong(), q.value(1).toString()});
    return lista;
}

std::optional<DatosNivel> LeeNivel(const Almacen& a, qint64 idNivel) {
    QString columnas = QStringLiteral("idNivel, Nombre, UsuarioSuper");
    for (const Permiso& p : Permisos()) columnas += QStringLiteral(", ") + p.columna;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT ") + columnas + QStringLiteral(" FROM Niveles WHERE idNivel = ?"),
                             {idNivel});
    if (!q.next()) return std::nullopt;
    DatosNivel d;
    d.idNivel = q.value(0).toLongLong();
    d.nombre = q.value(1).toString();
    d.usuarioSuper = SiNo(q.value(2));
    int i = 3;
    for (const Permiso& p : Permisos()) d.permisos.insert(p.columna, SiNo(q.value(i++)));
    return d;
}

std::optional<qint64> NuevoNivel(Almacen& a, const QString& nombre) {
    const QString n = nombre.trimmed();
    if (n.isEmpty()) return std::nullopt;
    ExigeTexto(n, kLargoNombreNivel, QStringLiteral("Nombre del nivel"));
    Transaccion t(a);
    if (nombreTomado(a, n, -1)) return std::nullopt;
    const qint64 id = a.inserta(QStringLiteral("INSERT INTO Niveles (Nombre) VALUES (?)"), {n}, QStringLiteral("idNivel"));
    t.confirmar();
    return id;
}

void GuardaNivel(Almacen& a, const DatosNivel& d) {
    const QString nombre = d.nombre.trimmed();
    // 1. El nombre: no vacío, que quepa y que no sea el de otro nivel.
    if (nombre.isEmpty()) throw Aviso(QStringLiteral("El nivel de acceso debe tener un nombre!"));
    ExigeTexto(nombre, kLargoNombreNivel, QStringLiteral("Nombre del nivel"));
    Transaccion t(a);
    const CuidaAdministradores administradores(a);
    if (nombreTomado(a, nombre, d.idNivel))
        throw Aviso(QStringLiteral("Ya existe otro nivel de acceso con ese nombre!"));
    // 2. Nombre, supervisor y cada permiso, en una sola orden.
    QString sql = QStringLiteral("UPDATE Niveles SET Nombre = ?, UsuarioSuper = ?");
    QVariantList p{nombre, d.usuarioSuper ? 1 : 0};
    for (const Permiso& per : Permisos()) {
        sql += QStringLiteral(", ") + per.columna + QStringLiteral(" = ?");
        p << (d.permisos.value(per.columna, false) ? 1 : 0);
    }
    p << d.idNivel;
    if (a.ejecuta(sql + QStringLiteral(" WHERE idNivel = ?"), p) == 0)
        throw Aviso(QStringLiteral("No encontrado! Otro puesto borró este nivel de acceso; los cambios no se "
                                   "guardaron."));
    // 3. Alguien tiene que poder seguir administrando los usuarios.
    administradores.exige(QStringLiteral("El nivel \"") + nombre +
                          QStringLiteral("\" tiene a los últimos usuarios que pueden administrar los usuarios del "
                                         "sistema: no puede quedar sin el permiso \"Usuarios\" ni dejar de ser un "
                                         "nivel supervisor. Antes dé ese permiso a otro nivel con usuarios."));
    t.confirmar();
}

bool NivelEnUso(const Almacen& a, qint64 idNivel) {
    return CuentaRegistros(a, QStringLiteral("SELECT idUsuario FROM Usuarios WHERE idNivel = ?"), {idNivel}) > 0;
}

qint64 CuentaAdministradores(const Almacen& a) {
    return a.valor(QStringLiteral("SELECT count(*) FROM Usuarios INNER JOIN Niveles ON Usuarios.idNivel = "
                                  "Niveles.idNivel WHERE Niveles.UsuarioSuper IN (1, -1) OR "
                                  "Niveles.VeUsuarios IN (1, -1)"))
        .toLongLong();
}

namespace {
// Candado consultivo de PostgreSQL que ordena los cambios de usuarios y niveles entre puestos.
constexpr qint64 kCandadoAdministradores = 7318004513;
} // namespace

CuidaAdministradores::CuidaAdministradores(Almacen& a) : almacen_(a) {
    if (a.esPostgreSQL()) a.valor(QStringLiteral("SELECT pg_advisory_xact_lock(?)"), {kCandadoAdministradores});
    antes_ = CuentaAdministradores(a);
}

void CuidaAdministradores::exige(const QString& texto) const {
    if (antes_ > 0 && CuentaAdministradores(almacen_) == 0) throw Aviso(texto);
}

void EliminaNivel(Almacen& a, qint64 idNivel) {
    Transaccion t(a);
    if (NivelEnUso(a, idNivel)) throw Aviso(QStringLiteral("Existen usuarios ya asignados a éste nivel!"));
    a.ejecuta(QStringLiteral("DELETE FROM Niveles WHERE idNivel = ?"), {idNivel});
    t.confirmar();
}

} // namespace orv
