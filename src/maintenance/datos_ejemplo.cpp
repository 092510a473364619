#include "maintenance/datos_ejemplo.h"

#include "maintenance/compras_ejemplo.h"
#include "maintenance/ventas_ejemplo.h"

#include "articles/etiquetas.h"
#include "articles/matriz.h"
#include "production/produccion.h"

#include "store/aviso.h"
#include "store/dinero.h"
#include "store/rutinas.h"

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <random>
#include <vector>

namespace orv {

namespace {

// Generador fijo: mt19937 da la misma secuencia en toda plataforma; las distribuciones de la
// biblioteca estándar no, por eso el rango se calcula a mano.
class Azar {
public:
    int entre(int desde, int hasta) { return desde + int(gen_() % quint32(hasta - desde + 1)); }
    bool cada(int n) { return gen_() % quint32(n) == 0; }

private:
    std::mt19937 gen_{20240611u};
};

QString u(const char* s) { return QString::fromUtf8(s); }

// Importe en centavos, listo para ligarlo a una columna de dinero.
QVariant importe(qint64 centavos) { return Dinero::desdeDiezmilesimos(centavos * 100).aVariant(); }

// Dígito verificador EAN-13 de los doce primeros dígitos: pesos 1 y 3 alternados desde la izquierda.
int verificadorEan13(const QString& doce) {
    int suma = 0;
    for (int i = 0; i < 12; ++i) suma += (doce[i].unicode() - '0') * (i % 2 ? 3 : 1);
    return (10 - suma % 10) % 10;
}

// CUIT con dígito verificador módulo 11 (pesos 5,4,3,2,7,6,5,4,3,2). Si el resto pide 10, que
// ningún dígito representa, se pasa al documento siguiente.
QString cuit(int prefijo, int documento) {
    static const int pesos[10] = {5, 4, 3, 2, 7, 6, 5, 4, 3, 2};
    for (;; ++documento) {
        const QString diez = QStringLiteral("%1%2").arg(prefijo, 2, 10, QLatin1Char('0')).arg(documento, 8, 10, QLatin1Char('0'));
        int suma = 0;
        for (int i = 0; i < 10; ++i) suma += (diez[i].unicode() - '0') * pesos[i];
        const int r = suma % 11;
        const int dv = r == 0 ? 0 : 11 - r;
        if (dv == 10) continue;
        return diez.left(2) + QLatin1Char('-') + diez.mid(2) + QLatin1Char('-') + QString::number(dv);
    }
}

// CBU de 22 dígitos con sus dos verificadores (bloque banco+sucursal y bloque cuenta).
QString cbu(const char* banco, int sucursal, qint64 cuenta) {
    const auto dv = [](const QString& cifras, const std::vector<int>& pesos) {
        int suma = 0;
        for (int i = 0; i < cifras.size(); ++i) suma += (cifras[i].unicode() - '0') * pesos[size_t(i)];
        return QString::number((10 - suma % 10) % 10);
    };
    const QString bloque1 = u(banco) + QStringLiteral("%1").arg(sucursal, 4, 10, QLatin1Char('0'));
    const QString bloque2 = QStringLiteral("%1").arg(cuenta, 13, 10, QLatin1Char('0'));
    return bloque1 + dv(bloque1, {7, 1, 3, 9, 7, 1, 3}) + bloque2 +
           dv(bloque2, {3, 9, 7, 1, 3, 9, 7, 1, 3, 9, 7, 1, 3});
}

QString sinAcentos(const QString& s) {
    QString r;
    for (const QChar c : s.normalized(QString::NormalizationForm_D))
        if (c.category() != QChar::Mark_NonSpacing) r += c;
    return r;
}

// ---- Catálogo -------------------------------------------------------------------------------

struct Producto {
    const char* nombre;
    const char* presentacion; // vacío si no tiene
    int costo;                // centavos, marca de referencia
    bool materiaPrima;
};

struct Marca {
    const char* nombre;
    int empresa; // 4 dígitos del fabricante en el EAN
};

struct Rubro {
    const char* nombre;
    double puntosVip;
    int margen;     // % de utilidad habitual del rubro
    int articulos;  // cuántos se cargan
    int minimo;     // mínimo de aviso habitual
    bool porPeso;   // se vende por kilo
    bool etiqueta;  // el comercio imprime su propia etiqueta
    int proveedor;  // índice en kProveedores
    std::vector<Marca> marcas;
    std::vector<Producto> productos;
};

const std::vector<Rubro>& rubros() {
    static const std::vector<Rubro> r = {
        {"Almacén", 1, 30, 60, 10, false, false, 0,
         {{"La Campiña", 1021}, {"Don Ernesto", 1187}, {"Santa Clara", 1342}},
         {{"Arroz largo fino", "1 kg", 90000, false},
          {"Fideos tallarines", "500 g", 60000, false},
          {"Fideos tirabuzón", "500 g", 62000, false},
          {"Aceite de girasol", "900 ml", 150000, false},
          {"Yerba mate", "1 kg", 280000, false},
          {"Azúcar común", "1 kg", 95000, false},
          {"Harina 000", "1 kg", 70000, false},
          {"Harina leudante", "1 kg", 85000, false},
          {"Sal fina", "500 g", 40000, false},
          {"Puré de tomate", "520 g", 55000, false},
          {"Arvejas en lata", "350 g", 65000, false},
          {"Lentejas", "400 g", 110000, false},
          {"Polenta", "500 g", 58000, false},
          {"Café molido", "250 g", 320000, false},
          {"Té en saquitos", "x 50", 120000, false},
          {"Galletitas de agua", "300 g", 90000, false},
          {"Mayonesa", "250 g", 105000, false},
          {"Vinagre de alcohol", "1 l", 70000, false},
          {"Atún al natural", "170 g", 190000, false},
          {"Pan de miga", "24 u", 210000, true}}},
        {"Bebidas", 2, 35, 45, 12, false, false, 1,
         {{"Cumbre Andina", 2045}, {"Río Dorado", 2210}, {"Los Álamos", 2398}},
         {{"Agua mineral sin gas", "2 l", 60000, false},
          {"Agua con gas", "1,5 l", 55000, false},
          {"Gaseosa cola", "2,25 l", 180000, false},
          {"Gaseosa lima limón", "2,25 l", 170000, false},
          {"Gaseosa naranja", "1,5 l", 130000, false},
          {"Jugo de naranja", "1 l", 110000, false},
          {"Cerveza rubia lata", "473 ml", 95000, false},
          {"Cerveza negra lata", "473 ml", 105000, false},
          {"Vino tinto Malbec", "750 ml", 350000, false},
          {"Vino blanco Torrontés", "750 ml", 320000, false},
          {"Agua saborizada pomelo", "1,5 l", 90000, false},
          {"Soda en sifón", "2 l", 50000, false},
          {"Bebida isotónica", "500 ml", 85000, false},
          {"Fernet", "750 ml", 700000, false},
          {"Sidra", "750 ml", 220000, false}}},
        {"Limpieza", 1, 35, 35, 6, false, false, 2,
         {{"Brillex", 3077}, {"Casa Limpia", 3154}, {"Espumín", 3291}},
         {{"Lavandina", "1 l", 45000, false},
          {"Detergente", "750 ml", 90000, false},
          {"Jabón en polvo", "800 g", 250000, false},
          {"Suavizante", "900 ml", 160000, false},
          {"Limpiador líquido para pisos", "900 ml", 110000, false},
          {"Esponja de cocina", "x 3", 60000, false},
          {"Trapo de piso", "", 70000, false},
          {"Desodorante de ambientes", "360 ml", 150000, false},
          {"Bolsas de residuos", "x 30", 80000, false},
          {"Papel higiénico", "x 4", 140000, false},
          {"Rollo de cocina", "x 3", 130000, false},
          {"Limpiavidrios", "500 ml", 95000, false}}},
        {"Perfumería", 3, 40, 30, 4, false, false, 3,
         {{"Aloé", 4012}, {"Bellaflor", 4168}, {"Frescor", 4325}},
         {{"Jabón de tocador", "90 g", 40000, false},
          {"Shampoo", "400 ml", 230000, false},
          {"Acondicionador", "400 ml", 230000, false},
          {"Desodorante en aerosol", "150 ml", 190000, false},
          {"Pasta dental", "90 g", 120000, false},
          {"Cepillo dental", "", 90000, false},
          {"Crema de manos", "100 ml", 170000, false},
          {"Algodón", "140 g", 100000, false},
          {"Toallitas húmedas", "x 50", 140000, false},
          {"Protector solar FPS 30", "200 ml", 650000, false}}},
        {"Librería", 2, 50, 30, 5, false, false, 4,
         {{"Trazo", 5033}, {"Escolar", 5109}, {"Punto Fino", 5276}},
         {{"Cuaderno tapa dura", "48 hojas", 150000, false},
          {"Cuaderno espiralado", "84 hojas", 260000, false},
          {"Birome azul", "", 30000, false},
          {"Birome negra", "", 30000, false},
          {"Lápiz negro HB", "", 20000, false},
          {"Goma de borrar", "", 15000, false},
          {"Regla", "30 cm", 35000, false},
          {"Resma A4", "500 hojas", 650000, false},
          {"Carpeta N° 3", "", 220000, false},
          {"Repuesto de hojas rayadas", "x 96", 180000, false}}},
        {"Golosinas", 0.5, 45, 40, 20, false, false, 5,
         {{"Dulce Lía", 6048}, {"Mielcita", 6131}, {"Caramelia", 6290}},
         {{"Alfajor de chocolate", "", 45000, false},
          {"Alfajor triple", "", 70000, false},
          {"Chocolate con leche", "100 g", 180000, false},
          {"Caramelos masticables", "x 10", 25000, false},
          {"Chicles de menta", "", 20000, false},
          {"Turrón de maní", "", 15000, false},
          {"Bombón de dulce de leche", "", 30000, false},
          {"Chupetín frutal", "", 12000, false},
          {"Gomitas", "100 g", 80000, false},
          {"Barra de cereal", "", 35000, false},
          {"Pastillas de menta", "", 30000, false},
          {"Galletitas rellenas", "118 g", 60000, false},
          {"Obleas bañadas", "", 40000, false},
          {"Maní salado", "100 g", 50000, false}}},
        {"Lácteos", 1, 25, 35, 8, false, false, 6,
         {{"La Pradera", 7019}, {"Tambo Sur", 7184}, {"Vacalín", 7342}},
         {{"Leche entera", "1 l", 80000, false},
          {"Leche descremada", "1 l", 82000, false},
          {"Yogur bebible frutilla", "1 l", 140000, false},
          {"Yogur firme vainilla", "190 g", 55000, false},
          {"Queso crema", "290 g", 160000, false},
          {"Manteca", "200 g", 190000, false},
          {"Dulce de leche", "400 g", 180000, false},
          {"Crema de leche", "200 ml", 120000, false},
          {"Queso rallado", "150 g", 210000, false},
          {"Postre de chocolate", "100 g", 50000, false},
          {"Leche chocolatada", "1 l", 130000, false},
          {"Ricota", "500 g", 170000, false}}},
        {"Fiambrería", 2, 40, 25, 2, true, true, 7,
         {{"Don Pedro", 8027}, {"La Serrana", 8163}, {"Granja Real", 8319}},
         {{"Jamón cocido", "por kg", 1200000, true},
          {"Queso de máquina", "por kg", 900000, true},
          {"Salame milán", "por kg", 1400000, false},
          {"Mortadela", "por kg", 700000, false},
          {"Bondiola", "por kg", 1600000, false},
          {"Paleta cocida", "por kg", 850000, false},
          {"Queso cremoso", "por kg", 800000, false},
          {"Salchichas", "x 6", 150000, false},
          {"Queso pategrás", "por kg", 1300000, false}}},
    };
    return r;
}

// ---- Proveedores ----------------------------------------------------------------------------

struct Proveedor {
    const char* razonSocial;
    const char* contacto;
    const char* direccion;
    const char* cpostal;
    const char* telefono;
    const char* email;
    const char* banco;
    const char* bancoNombre;
};

const Proveedor kProveedores[] = {
    {"Distribuidora Rosario Norte S.A.", "Marcelo Giménez", "Av. Alberdi 1450, Rosario", "2000",
     "0341 438-2210", "ventas@rosarionorte.com.ar", "011", "Banco de la Nación Argentina"},
    {"Bebidas del Litoral S.R.L.", "Silvina Paz", "Av. Circunvalación 3200, Rosario", "2000",
     "0341 457-9031", "pedidos@bebidaslitoral.com.ar", "330", "Nuevo Banco de Santa Fe"},
    {"Química Paraná S.A.", "Hugo Benítez", "Ruta 9 km 312, Funes", "2132",
     "0341 493-1175", "comercial@quimicaparana.com.ar", "007", "Banco de Galicia"},
    {"Perfumería Mayorista del Centro S.R.L.", "Lorena Acosta", "San Luis 1820, Rosario", "2000",
     "0341 421-6650", "mayorista@perfucentro.com.ar", "072", "Banco Santander"},
    {"Papelera Santa Fe S.A.", "Ricardo Molina", "Bv. Oroño 4100, Rosario", "2000",
     "0341 463-0098", "ventas@papelerasantafe.com.ar", "285", "Banco Macro"},
    {"Golosinas La Dulcería S.R.L.", "Verónica Ledesma", "Av. Pellegrini 2750, Rosario", "2000",
     "0341 481-3322", "pedidos@ladulceria.com.ar", "017", "BBVA Argentina"},
    {"Lácteos Pampa Húmeda S.A.", "Gustavo Ferrero", "Ruta 34 km 8, Roldán", "2134",
     "0341 496-4410", "distribucion@pampahumeda.com.ar", "191", "Banco Credicoop"},
    {"Frigorífico y Fiambres Don Pedro S.A.", "Pedro Castagnino", "Av. San Martín 5400, Villa Gobernador Gálvez",
     "2124", "0341 492-7785", "ventas@fiambresdonpedro.com.ar", "065", "Banco Municipal de Rosario"},
};

// ---- Clientes -------------------------------------------------------------------------------

struct Localidad {
    const char* nombre;
    const char* cpostal;
    const char* zonas[3]; // zonas posibles dentro de la localidad
};

const Localidad kLocalidades[] = {
    {"Rosario", "2000", {"Centro", "Norte", "Sur"}},
    {"Funes", "2132", {"Oeste", "Oeste", "Oeste"}},
    {"Roldán", "2134", {"Oeste", "Oeste", "Oeste"}},
    {"Granadero Baigorria", "2152", {"Norte", "Norte", "Norte"}},
    {"Villa Gobernador Gálvez", "2124", {"Sur", "Sur", "Sur"}},
};

const char* const kZonas[] = {"Centro", "Norte", "Sur", "Oeste"};

const char* const kCalles[] = {"San Martín", "Belgrano", "Mitre", "Sarmiento", "Rivadavia", "Córdoba",
                               "Urquiza", "Pellegrini", "Moreno", "9 de Julio", "Entre Ríos", "España",
                               "Corrientes", "Maipú", "Santa Fe", "Laprida"};

// Alternan mujer y varón (el prefijo del CUIT depende de eso).
const char* const kNombres[] = {"María José", "Juan Carlos", "Ana", "Jorge", "Silvia", "Carlos",
                                "Claudia", "Roberto", "Mónica", "Sergio", "Patricia", "Daniel",
                                "Graciela", "Martín", "Lucía", "Pablo", "Florencia", "Diego",
                                "Valeria", "Andrés", "Romina", "Matías", "Natalia", "Facundo", "Belén"};

const char* const kApellidos[] = {"González", "Rodríguez", "Fernández", "López", "Martínez", "Pérez",
                                  "Gómez", "Díaz", "Sánchez", "Romero", "Sosa", "Álvarez", "Torres",
                                  "Ruiz", "Ramírez", "Flores", "Benítez", "Acosta", "Medina", "Herrera",
                                  "Aguirre", "Quiroga", "Ibáñez", "Peralta", "Muñoz"};

enum Iva { ConsumidorFinal, Inscripto, Monotributo, Exento };

struct Empresa {
    const char* empresa;
    const char* contacto;
    Iva iva;
    int prefijoCuit;  // 30/33 sociedades, 20 varón, 27 mujer
    int localidad;    // índice en kLocalidades
    const char* pago; // forma de pago preferida
    int descuento;
    const char* email;
};

const Empresa kEmpresas[] = {
    {"Panadería La Espiga S.R.L.", "Oscar Bianchi", Inscripto, 30, 0, "CTA CTE", 5, "administracion@laespiga.com.ar"},
    {"Bar El Farolito", "Raúl Cabrera", Monotributo, 20, 0, "CTA CTE", 0, "elfarolito.bar@correo.com.ar"},
    {"Rotisería Don Carlos", "Carlos Vitale", Monotributo, 20, 1, "EFVO", 0, ""},
    {"Hotel Plaza Rosario S.A.", "Gabriela Sánchez", Inscripto, 30, 0, "CTA CTE", 10, "compras@hotelplazarosario.com.ar"},
    {"Club Atlético Unión de Funes", "Néstor Ojeda", Exento, 30, 1, "CTA CTE", 0, "tesoreria@clubunionfunes.org.ar"},
    {"Biblioteca Popular Sarmiento", "Elena Ríos", Exento, 30, 2, "EFVO", 0, "biblioteca.sarmiento@correo.com.ar"},
    {"Cooperadora Escuela N° 1254", "Alicia Méndez", Exento, 30, 4, "CHEQ", 0, ""},
    {"Estudio Contable Ferreyra y Asociados", "Julián Ferreyra", Inscripto, 33, 0, "CTA CTE", 0, "estudio@ferreyrayasoc.com.ar"},
    {"Constructora del Paraná S.A.", "Ignacio Vega", Inscripto, 30, 3, "CHEQ", 5, "compras@constructoraparana.com.ar"},
    {"Kiosco El Recreo", "Mariela Duarte", Monotributo, 27, 0, "EFVO", 0, ""},
    {"Remisería Centro", "Walter Paredes", Monotributo, 20, 0, "EFVO", 0, ""},
    {"Farmacia Belgrano S.C.S.", "Laura Ponce", Inscripto, 33, 0, "CTA CTE", 0, "farmaciabelgrano@correo.com.ar"},
    {"Taller Mecánico Hnos. Ruiz S.R.L.", "Ramón Ruiz", Inscripto, 30, 2, "EFVO", 0, ""},
    {"Jardín de Infantes Pimpollitos S.R.L.", "Carina Luna", Inscripto, 30, 1, "CTA CTE", 0, "pimpollitos@correo.com.ar"},
    {"Veterinaria San Roque S.R.L.", "Federico Maidana", Inscripto, 33, 4, "EFVO", 0, ""},
};

constexpr int kPersonas = 25;   // 40 clientes: 15 empresas y 25 particulares
constexpr int kConTarjeta = 15; // particulares con tarjeta de cliente VIP

// ---- Tipos de comprobante -------------------------------------------------------------------

struct TipoComprobante {
    const char* tipo;
    const char* letra;
    const char* puntoDeVenta;
    int descuentaStock, registraCaja, operacionInversa, esComercial;
    const char* plantilla;
};

// La letra A discrimina IVA; B va a consumidor final, monotributo y exento. El presupuesto no toca
// stock ni caja ni cuenta en las estadísticas; el remito mueve mercadería y la factura lo cobra después.
// El ticket sale de otro punto de venta (el de la caja), así su número nunca se confunde con el de
// una factura B.
const TipoComprobante kTipos[] = {
    {"FACTURA A", "A", "0001", 1, 1, 0, 1, "factura_discrimina_iva.rpt"},
    {"FACTURA B", "B", "0001", 1, 1, 0, 1, "factura.rpt"},
    {"NOTA DE CREDITO A", "A", "0001", 1, 1, 1, 1, "factura_discrimina_iva.rpt"},
    {"NOTA DE CREDITO B", "B", "0001", 1, 1, 1, 1, "factura.rpt"},
    {"PRESUPUESTO", "X", "0001", 0, 0, 0, 0, "factura.rpt"},
    {"REMITO", "R", "0001", 1, 0, 0, 0, "factura.rpt"},
    {"TICKET", "B", "0002", 1, 1, 0, 1, "factura.rpt"},
};

// ---- Carga ----------------------------------------------------------------------------------

void exigeAlmacenVacio(Almacen& a) {
    const auto cuenta = [&a](const char* sql) { return a.valor(u(sql)).toLongLong(); };
    if (cuenta("SELECT count(*) FROM Articulos") > 0 ||
        cuenta("SELECT count(*) FROM Vendedores WHERE idVendedor <> 1") > 0 ||
        cuenta("SELECT count(*) FROM Comprobantes") > 0 || cuenta("SELECT count(*) FROM Caja") > 0 ||
        cuenta("SELECT count(*) FROM Rubros") > 0 || cuenta("SELECT count(*) FROM Proveedores") > 0)
        throw Aviso(u("El almacén ya tiene datos: los datos de ejemplo sólo se cargan en un almacén nuevo."),
                    u("Atención"), Icono::Exclamacion);
}


std::vector<qint64> cargaProveedores(Almacen& a, Azar& azar) {
    std::vector<qint64> ids;
    int n = 0;
    for (const Proveedor& p : kProveedores) {
        ++n;
        const QString telefono2 = QStringLiteral("341 15-%1-%2").arg(azar.entre(400, 699)).arg(azar.entre(1000, 9999));
        ids.push_back(a.inserta(
            QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial, Cuit, Telefono, Telefono2, email, Direccion, "
                           "CBU, CPostal, BancoNombre) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
            {u(p.contacto), u(p.razonSocial), cuit(n % 2 ? 30 : 33, azar.entre(50000000, 71999999)), u(p.telefono),
             telefono2, u(p.email), u(p.direccion), cbu(p.banco, azar.entre(1, 450), azar.entre(100000, 9999999) * 1000LL + n),
             u(p.cpostal), u(p.bancoNombre)},
            QStringLiteral("idProveedor")));
    }
    return ids;
}

void cargaArticulos(Almacen& a, Azar& azar, const std::vector<qint64>& proveedores, const QDate& hoy) {
    for (const Rubro& r : rubros()) {
        const qint64 idRubro = a.inserta(QStringLiteral("INSERT INTO Rubros (Rubro, PuntosVIP) VALUES (?, ?)"),
                                         {u(r.nombre), r.puntosVip}, QStringLiteral("idRubro"));
        const int nProductos = int(r.productos.size());
        const int nMarcas = int(r.marcas.size());
        for (int k = 0; k < r.articulos; ++k) {
            const int iProducto = k % nProductos;
            const int iMarca = (k / nProductos) % nMarcas;
            const Producto& p = r.productos[size_t(iProducto)];
            const Marca& m = r.marcas[size_t(iMarca)];

            // Código interno: dígitos del rubro y número del artículo dentro del rubro.
            const QString codigo = QStringLiteral("%1%2").arg(idRubro, 2, 10, QLatin1Char('0')).arg(k + 1, 4, 10, QLatin1Char('0'));
            QString descripcion = u(p.nombre) + QLatin1Char(' ') + u(m.nombre);
            if (*p.presentacion) descripcion += QLatin1Char(' ') + u(p.presentacion);

            // Código de barras del fabricante: 779 (Argentina), empresa, producto, verificador.
            const int iRubro = int(&r - rubros().data());
            const QString doce = QStringLiteral("779%1%2")
                                     .arg(m.empresa, 4, 10, QLatin1Char('0'))
                                     .arg((iRubro + 1) * 1000 + iProducto + 1, 5, 10, QLatin1Char('0'));
            const QString ean = doce + QString::number(verificadorEan13(doce));
            // La mitad de lo envasado se vende por el código de barras del paquete, como en un
            // comercio que escanea; lo que se vende suelto o por peso, por el código interno.
            const QString codigoVenta = !r.porPeso && k % 2 == 0 ? ean : codigo;

            // Cada marca tiene su nivel de precio y cada artículo una pequeña variación.
            static const int nivelMarca[3] = {100, 92, 110};
            qint64 costo = qint64(p.costo) * nivelMarca[iMarca] / 100 * azar.entre(97, 103) / 100;
            costo = (costo + 5) / 10 * 10; // a diez centavos
            const int margen = r.margen + 5 * azar.entre(-1, 1);
            const qint64 venta = (costo * (100 + margen) + 50) / 100;
            const Dinero precioFinal = Dinero::desdeDiezmilesimos(venta * 121); // IVA 21 %: exacto en 4 decimales

            double stock;
            double minimo;
            if (r.porPeso) {
                stock = azar.entre(2, 24) / 2.0;
                minimo = r.minimo;
            } else {
                minimo = r.minimo + azar.entre(0, r.minimo / 2);
                // Uno de cada ocho queda en falta, para que el informe de faltantes tenga qué mostrar.
                stock = azar.cada(8) ? azar.entre(0, int(minimo)) : azar.entre(int(minimo) + 1, int(minimo) * 6);
            }

            a.ejecuta(QStringLiteral(
                          "INSERT INTO Articulos (idRubro, IdProveedor, Codigo, Descripcion, StockActual, StockMinimo, "
                          "PrecioCosto, PrecioVenta, PrecioFinal, UtilidadPorcentaje, CgoProveedor, ImprimeCodigoBarra, "
                          "esMateriaPrima, Foto, UltimaFechaCompra) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                      {idRubro, proveedores[size_t(r.proveedor)], codigoVenta, descripcion, stock, minimo, importe(costo),
                       importe(venta), precioFinal.aVariant(), double(margen), ean, r.etiqueta ? 1 : 0, p.materiaPrima ? 1 : 0,
                       QString(), hoy.addDays(-azar.entre(1, 60))});
        }
    }
}

void cargaClientes(Almacen& a, Azar& azar) {
    // Situaciones frente al IVA: las de partida, o se agregan si faltaran.
    const auto idIva = [&a](const char* nombre) {
        return buscaOAgrega(a, QStringLiteral("TipoDeIva"), QStringLiteral("idTipoIva"), QStringLiteral("TipoIva"),
                            u(nombre));
    };
    const qint64 ivas[4] = {idIva("Consumidor Final"), idIva("Responsable Inscripto"), idIva("Monotributo"),
                            idIva("Exento")};
    const auto idPago = [&a](const char* forma) {
        return buscaOAgrega(a, QStringLiteral("FormasDePago"), QStringLiteral("idTipoFormaPago"),
                            QStringLiteral("FormaPago"), u(forma));
    };
    QHash<QString, qint64> zonas;
    for (const char* z : kZonas)
        zonas.insert(u(z), buscaOAgrega(a, QStringLiteral("Zonas"), QStringLiteral("idZona"), QStringLiteral("Zona"), u(z)));
    for (const Localidad& l : kLocalidades)
        buscaOAgrega(a, QStringLiteral("Localidades"), QStringLiteral("idLocalidad"), QStringLiteral("Localidad"),
                     u(l.nombre));

    const QString insertaCliente = QStringLiteral(
        "INSERT INTO Vendedores (Nombre, Empresa, Domicilio, Localidad, CPostal, Telefono, Telefono2, \"e-mail\", Cuit, "
        "idTipoIva, idZona, idTipoFormaPago, Descuento, Comision, NroClienteVIP, PuntosVIP) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, 0)");
    const auto domicilio = [&azar]() {
        return u(kCalles[azar.entre(0, int(std::size(kCalles)) - 1)]) + QLatin1Char(' ') +
               QString::number(azar.entre(1, 39) * 100 + azar.entre(0, 99));
    };
    const auto telefono = [&azar]() {
        return QStringLiteral("0341 4%1-%2").arg(azar.entre(10, 99)).arg(azar.entre(1000, 9999));
    };
    const auto celular = [&azar]() {
        return QStringLiteral("341 15-%1-%2").arg(azar.entre(400, 699)).arg(azar.entre(1000, 9999));
    };

    for (const Empresa& e : kEmpresas) {
        const Localidad& l = kLocalidades[e.localidad];
        const bool sociedad = e.prefijoCuit >= 30;
        const QString clave = cuit(e.prefijoCuit, sociedad ? azar.entre(50000000, 71999999) : azar.entre(14000000, 38999999));
        a.ejecuta(insertaCliente,
                  {u(e.contacto), u(e.empresa), domicilio(), u(l.nombre), u(l.cpostal), telefono(), celular(),
                   u(e.email), clave, ivas[e.iva], zonas.value(u(l.zonas[azar.entre(0, 2)])), idPago(e.pago),
                   double(e.descuento), QString()});
    }

    // Particulares: la mayoría consumidores finales, algunos monotributistas y dos profesionales inscriptos.
    QStringList tarjetas;
    for (int i = 0; i < kPersonas; ++i) {
        const QString nombre = u(kNombres[i]) + QLatin1Char(' ') + u(kApellidos[(i * 7) % kPersonas]);
        const Iva iva = i % 9 == 4 ? Inscripto : (i % 4 == 3 ? Monotributo : ConsumidorFinal);
        const Localidad& l = kLocalidades[i % 3 == 2 ? azar.entre(1, 4) : 0];
        QString clave;
        if (iva != ConsumidorFinal) clave = cuit(i % 2 ? 20 : 27, azar.entre(14000000, 38999999)); // nombres alternados: mujer, varón

        // Tarjeta de cliente VIP: sólo números, de 6 a 8 cifras y sin repetir.
        QString tarjeta;
        if (i % 5 != 4 && tarjetas.size() < kConTarjeta) {
            do {
                const int cifras = 6 + i % 3;
                int desde = 1;
                for (int c = 1; c < cifras; ++c) desde *= 10;
                tarjeta = QString::number(azar.entre(desde, desde * 10 - 1));
            } while (tarjetas.contains(tarjeta));
            tarjetas << tarjeta;
        }
        QString correo;
        if (i % 2 == 0)
            correo = sinAcentos(u(kNombres[i]).section(QLatin1Char(' '), 0, 0) + QLatin1Char('.') +
                                u(kApellidos[(i * 7) % kPersonas]))
                         .toLower() +
                     QStringLiteral("@correo.com.ar");
        // Algunos vecinos compran a cuenta.
        const char* pago = (i % 8 == 1) ? "CTA CTE" : "EFVO";
        a.ejecuta(insertaCliente,
                  {nombre, QString(), domicilio(), u(l.nombre), u(l.cpostal), telefono(), i % 3 ? celular() : QString(),
                   correo, clave, ivas[iva], zonas.value(u(l.zonas[azar.entre(0, 2)])), idPago(pago), 0.0, tarjeta});
    }
}

void cargaTiposDeComprobante(Almacen& a) {
    // Los tipos que ya están (los de partida) se conservan: el del mismo nombre se ajusta, y los
    // de otro nombre pasan a ser los que faltan, en orden; así no queda ninguno de más.
    QHash<QString, qint64> porNombre;
    QList<qint64> libres;
    {
        QSqlQuery q = a.consulta(QStringLiteral("SELECT idTipoComprobante, Tipo FROM TiposDeComprobantes "
                                                "ORDER BY idTipoComprobante"));
        while (q.next()) {
            const QString tipo = q.value(1).toString().trimmed().toUpper();
            bool nuestro = false;
            for (const TipoComprobante& t : kTipos) nuestro = nuestro || tipo == u(t.tipo);
            if (nuestro && !porNombre.contains(tipo)) porNombre.insert(tipo, q.value(0).toLongLong());
            else libres << q.value(0).toLongLong();
        }
    }
    for (const TipoComprobante& t : kTipos) {
        const QVariantList valores = {u(t.tipo),          u(t.letra),         u(t.puntoDeVenta),
                                      t.descuentaStock,   t.registraCaja,     t.operacionInversa,
                                      t.esComercial,      u(t.plantilla)};
        qint64 id = porNombre.value(u(t.tipo), 0);
        if (id == 0 && !libres.isEmpty()) id = libres.takeFirst();
        if (id != 0) {
            a.ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET Tipo = ?, Letra = ?, PuntoDeVenta = ?, "
                                     "Correlativo = 0, DescuentaStock = ?, RegistraCaja = ?, OperacionInversa = ?, "
                                     "EsComercial = ?, NombrePlantilla = ?, ModDocumento = 0 "
                                     "WHERE idTipoComprobante = ?"),
                      valores + QVariantList{id});
        } else {
            a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, Correlativo, "
                                     "DescuentaStock, RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla, "
                                     "ModDocumento) VALUES (?, ?, ?, 0, ?, ?, ?, ?, ?, 0)"),
                      valores);
        }
    }
}

// El negocio que emite los comprobantes: razón social, domicilio y datos fiscales. Si el comercio
// ya cargó los suyos, quedan los suyos.
void cargaEmpresa(Almacen& a) {
    if (a.valor(QStringLiteral("SELECT count(*) FROM Empresa")).toLongLong() > 0) return;
    a.ejecuta(QStringLiteral("INSERT INTO Empresa (NombreEmpresa, NombreFantasia, Direccion, CgoPostal, Telefono, email, web, "
                             "Cuit, CondicionIva, InicioActividades) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
              {u("Almacén y Despensa Don Tito S.R.L."), u("Don Tito"), u("San Martín 1450, Rosario, Santa Fe"),
               QStringLiteral("S2000"), QStringLiteral("0341 455-1020"), QStringLiteral("ventas@dontito.com.ar"),
               QStringLiteral("www.dontito.com.ar"), cuit(30, 71234567), u("IVA Responsable Inscripto"),
               QDate(2009, 3, 2)});
}

// ---- Producción y matriz --------------------------------------------------------------------

// Dos artículos que la fiambrería arma con sus materias primas (pan de miga, jamón y queso), con su
// fórmula y una corrida de ayer si alcanzan las existencias.
struct Elaborado {
    const char* descripcion;
    int numero; // dentro de la fiambrería, después de los que vende
    std::vector<std::pair<const char*, const char*>> formula; // materia prima (comienzo) y cantidad
};

void cargaProduccion(Almacen& a, const QDate& hoy) {
    const qint64 idRubro = a.valor(QStringLiteral("SELECT idRubro FROM Rubros WHERE Rubro = ?"), {u("Fiambrería")}).toLongLong();
    const qint64 articulos = a.valor(QStringLiteral("SELECT count(*) FROM Articulos WHERE idRubro = ?"), {idRubro}).toLongLong();
    const QList<MateriaPrima> materias = MateriasPrimas(a);
    const Elaborado elaborados[] = {
        {"Sándwiches de miga jamón y queso x 12", 1, {{"Pan de miga", "0.5"}, {"Jamón cocido", "0.12"}, {"Queso de máquina", "0.1"}}},
        {"Picada de fiambres para dos", 2, {{"Jamón cocido", "0.15"}, {"Queso de máquina", "0.2"}}},
    };
    for (const Elaborado& e : elaborados) {
        QList<LineaFormula> lineas;
        for (const auto& [materia, cantidad] : e.formula)
            for (const MateriaPrima& mp : materias)
                if (mp.descripcion.startsWith(u(materia))) {
                    lineas << LineaDeFormula(mp, u(cantidad));
                    break;
                }
        // Costo de la fórmula a diez centavos, 40 % de margen y el precio con IVA exacto.
        const qint64 costo = (CostoDeFormula(lineas).diezmilesimos() / 100 + 9) / 10 * 10;
        const qint64 venta = (costo * 140 + 50) / 100;
        const QString doce = QStringLiteral("77990010%1").arg(idRubro * 100 + e.numero, 4, 10, QLatin1Char('0'));
        const qint64 id = a.inserta(
            QStringLiteral("INSERT INTO Articulos (idRubro, IdProveedor, Codigo, Descripcion, StockActual, StockMinimo, PrecioCosto, "
                           "PrecioVenta, PrecioFinal, UtilidadPorcentaje, CgoProveedor, ImprimeCodigoBarra, esMateriaPrima) "
                           "VALUES (?, (SELECT MIN(IdProveedor) FROM Articulos WHERE idRubro = ?), ?, ?, 0, 2, ?, ?, ?, 40, ?, 1, 0)"),
            {idRubro, idRubro, QStringLiteral("%1%2").arg(idRubro, 2, 10, QLatin1Char('0')).arg(articulos + e.numero, 4, 10, QLatin1Char('0')),
             u(e.descripcion), importe(costo), importe(venta), Dinero::desdeDiezmilesimos(venta * 121).aVariant(),
             doce + QString::number(verificadorEan13(doce))},
            QStringLiteral("idArticulo"));
        GuardaFormula(a, id, lineas, std::nullopt);
        // Ayer se armaron hasta cuatro, lo que permitieron las existencias.
        const double alcanza = a.valor(QStringLiteral("SELECT MIN(m.StockActual / f.Cantidad) FROM FormulaProduccion f "
                                                      "INNER JOIN Articulos m ON m.idArticulo = f.idArticuloMP WHERE f.idArticuloFinal = ?"),
                                       {id}).toDouble();
        if (const int cuantos = std::min(4, int(alcanza)); cuantos > 0)
            RegistraProduccion(a, {id, QString::number(cuantos), QStringLiteral("1500"), hoy.addDays(-1)});
    }
}

// Las características de la matriz y un delantal escolar en dos colores y cuatro talles, grabado
// como lo hace la ficha: un artículo por combinación.
void cargaMatriz(Almacen& a) {
    const QStringList colores = {u("Blanco"), u("Azul marino"), u("Rojo")};
    const QStringList talles = {u("6"), u("8"), u("10"), u("12")};
    const QStringList existentes = Caracteristicas(a);
    if (!existentes.contains(u("Color"))) AgregaCaracteristica(a, u("Color"), colores);
    if (!existentes.contains(u("Talle"))) AgregaCaracteristica(a, u("Talle"), talles);
    const QVariant idRubro = a.valor(QStringLiteral("SELECT idRubro FROM Rubros WHERE Rubro = ?"), {u("Librería")});
    const qint64 articulos = a.valor(QStringLiteral("SELECT count(*) FROM Articulos WHERE idRubro = ?"), {idRubro}).toLongLong();
    DatosArticulo base;
    base.descripcion = u("Delantal escolar");
    base.idRubro = idRubro;
    base.idProveedor = a.valor(QStringLiteral("SELECT MIN(IdProveedor) FROM Articulos WHERE idRubro = ?"), {idRubro});
    base.stockMinimo = u("1");
    base.precioCosto = u("8500.00");
    base.precioVenta = u("12750.00");
    base.utilidad = u("50");
    const QString doce = QStringLiteral("779900200001");
    base.cgoProveedor = doce + QString::number(verificadorEan13(doce));
    QList<Eleccion> blancoYAzul, cuatroTalles;
    for (const QString& c : colores.mid(0, 2)) blancoYAzul << Eleccion{u("Color"), c};
    for (const QString& t : talles) cuatroTalles << Eleccion{u("Talle"), t};
    const QString codigo = QStringLiteral("%1%2").arg(idRubro.toLongLong(), 2, 10, QLatin1Char('0')).arg(articulos + 1, 4, 10, QLatin1Char('0'));
    GrabaArticuloConMatriz(a, base, Combinaciones(codigo, base.descripcion, u("3"), {blancoYAzul, cuatroTalles}, {}), u("21"));
}


// Vendedores, comisiones y premios: dos vendedores (sin contraseña: el supervisor se la pone),
// las ventas de mostrador repartidas entre ellos con su comisión sobre el neto, como las deja la
// venta, una liquidación pagada por caja hace diez días, y tres premios para los clientes con
// tarjeta (uno vencido) con uno ya cobrado hace cinco días.
void cargaVendedoresYPremios(Almacen& a, const QDate& hoy) {
    const qint64 nivel = a.inserta(QStringLiteral("INSERT INTO Niveles (Nombre, VeVentas, VeClientes) VALUES (?, 1, 1)"),
                                   {u("Vendedores")}, QStringLiteral("idNivel"));
    const struct {
        const char *nombre, *usuario;
        double comision;
    } vendedores[] = {{"Carla Gómez", "carla", 3}, {"Martín Ruiz", "martin", 2.5}};
    QList<qint64> ids;
    for (const auto& v : vendedores)
        ids << a.inserta(QStringLiteral("INSERT INTO Usuarios (NombreCompleto, NombreUsuario, idNivel, Comision) VALUES (?, ?, ?, ?)"),
                         {u(v.nombre), u(v.usuario), nivel, v.comision}, QStringLiteral("idUsuario"));
    // Las ventas de contado al consumidor final: las pares de Carla, las impares de Martín.
    for (int i = 0; i < 2; ++i)
        a.ejecuta(QStringLiteral("UPDATE Comprobantes SET idVendio = ?, Comision = ? "
                                 "WHERE idVendedor = 1 AND EsComercial <> 0 AND TipoStock = 0 AND idComprobante % 2 = ?"),
                  {ids[i], vendedores[i].comision, i});
    a.ejecuta(QStringLiteral("INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe) "
                             "SELECT Fecha, 'Comision x Vta', idVendio, idComprobante, Comision, "
                             "ROUND(CAST(ImporteNeto * Comision / 100 AS NUMERIC), 4) FROM Comprobantes WHERE idVendio > 0 ORDER BY idComprobante"));
    const QDate pago = hoy.addDays(-10);
    const Dinero aPagar = Dinero::desdeVariant(
        a.valor(QStringLiteral("SELECT SUM(Importe) FROM DetComisiones WHERE idUsuario = ? AND Fecha < ?"), {ids[0], pago}));
    a.ejecuta(QStringLiteral("INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe) "
                             "VALUES (?, ?, ?, 0, 0, ?)"),
              {pago, u("Liquidación"), ids[0], (-aPagar).aVariant()});
    a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
                             "VALUES ((SELECT MIN(idCuenta) FROM Cuentas WHERE Cuenta = 'Gastos Generales'), 0, ?, ?, 0, ?, "
                             "'EFVO', (SELECT COALESCE(MIN(idUsuario), 1) FROM Usuarios))"),
              {pago, u("Liq.Comisiones a Carla Gómez"), aPagar.aVariant()});
    // Premios: los puntos pedidos, a la medida de lo que junta el cliente con tarjeta del ejemplo.
    const qint64 conTarjeta =
        a.valor(QStringLiteral("SELECT MIN(idVendedor) FROM Vendedores WHERE LENGTH(NroClienteVIP) > 0")).toLongLong();
    const qint64 puntos =
        a.valor(QStringLiteral("SELECT COALESCE(PuntosVIP, 0) FROM Vendedores WHERE idVendedor = ?"), {conTarjeta}).toLongLong();
    const qint64 chico = std::max<qint64>(10, puntos / 40 * 10), grande = std::max<qint64>(50, (puntos * 2) / 10 * 10);
    const struct {
        const char* articulo; // la primera descripción que empieza así
        double cantidad;
        int desde, hasta;     // días desde hoy
        qint64 puntos;
    } premios[] = {{"Chocolate con leche", 2, -30, 90, chico}, {"Yerba mate", 1, -30, 90, grande}, {"Cuaderno", 3, -90, -31, chico}};
    for (const auto& p : premios)
        a.ejecuta(QStringLiteral("INSERT INTO TablaVIP (idArticulo, Cantidad, VigenciaDESDE, VigenciaHASTA, PuntosRequeridos) "
                                 "SELECT MIN(idArticulo), ?, ?, ?, ? FROM Articulos WHERE Descripcion LIKE ?"),
                  {p.cantidad, hoy.addDays(p.desde), hoy.addDays(p.hasta), p.puntos, u(p.articulo) + u("%")});
    if (conTarjeta > 0 && puntos >= chico)
        a.ejecuta(QStringLiteral("INSERT INTO Vip (idCliente, Fecha, idUsuario, idComprobante, PuntosVIP) VALUES (?, ?, 1, 0, ?)"),
                  {conTarjeta, hoy.addDays(-5), -chico});
}

// Dos hojas de etiquetas comunes: la A4 de 3 × 7 y una de góndola de 4 × 10.
void cargaHojasEtiquetas(Almacen& a) {
    GuardaHojaEtiquetas(a, {QStringLiteral("A4 3 x 7 (63.5 x 38.1 mm)"), 3, 7, 7.2, 15.15, 2.5, 0, 63.5, 38.1, 24});
    GuardaHojaEtiquetas(a, {QStringLiteral("A4 4 x 10 (48.5 x 25.4 mm)"), 4, 10, 8, 21.5, 0, 0, 48.5, 25.4, 16});
}

} // namespace

void cargaDatosEjemplo(Almacen& a, const Reloj& reloj) {
    Transaccion t(a);
    exigeAlmacenVacio(a);
    cargaEmpresa(a);
    Azar azar;
    const std::vector<qint64> proveedores = cargaProveedores(a, azar);
    cargaArticulos(a, azar, proveedores, reloj.hoy());
    cargaClientes(a, azar);
    cargaTiposDeComprobante(a);
    CargaComprasEjemplo(a, reloj.hoy(), 1, 1);
    CargaVentasEjemplo(a, reloj.hoy());
    cargaProduccion(a, reloj.hoy());
    cargaMatriz(a);
    cargaVendedoresYPremios(a, reloj.hoy());

    cargaHojasEtiquetas(a);
    t.confirmar();
}

} // namespace orv
