// El ticket impreso se prueba con los bytes que llegan: a un pseudo-terminal (el puerto serie) y a
// un servidor TCP local (la impresora de red). Un decodificador ESC/POS propio de la prueba los
// vuelve a leer: las órdenes, las líneas de texto con las letras acentuadas según la página de
// códigos, el corte y el pulso del cajón.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "sales/ticket.h"

#include <QCoreApplication>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <fcntl.h>
#include <map>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

namespace orv {
namespace {

using prueba::AvisoDe;

// Lo que la prueba sabe de CP850/CP858, escrito aparte del programa.
const std::map<unsigned char, QChar> kLetras = {{0xa0, u'á'}, {0x82, u'é'}, {0xa1, u'í'}, {0xa2, u'ó'}, {0xa3, u'ú'},
                                                {0xa4, u'ñ'}, {0xa5, u'Ñ'}, {0xa8, u'¿'}, {0xad, u'¡'}, {0x90, u'É'}};

// Las órdenes y las líneas, una por renglón.
QStringList decodifica(const QByteArray& b, int pagina = 19) {
    QStringList r;
    QString linea;
    for (qsizetype i = 0; i < b.size(); ++i) {
        const auto c = static_cast<unsigned char>(b[i]);
        const auto arg = [&](int k) { return i + k < b.size() ? int(static_cast<unsigned char>(b[i + k])) : -1; };
        if (c == 0x1b && arg(1) == '@') r << QStringLiteral("[inicio]"), i += 1;
        else if (c == 0x1b && arg(1) == 't') r << QStringLiteral("[pagina %1]").arg(arg(2)), i += 2;
        else if (c == 0x1b && arg(1) == 'E') r << QStringLiteral("[negrita %1]").arg(arg(2)), i += 2;
        else if (c == 0x1b && arg(1) == 'a') r << QStringLiteral("[alinea %1]").arg(arg(2)), i += 2;
        else if (c == 0x1b && arg(1) == 'p') r << QStringLiteral("[cajon %1 %2 %3]").arg(arg(2)).arg(arg(3)).arg(arg(4)), i += 4;
        else if (c == 0x1d && arg(1) == 'V') r << QStringLiteral("[corte %1 %2]").arg(arg(2)).arg(arg(3)), i += 3;
        else if (c == '\n') r << linea, linea.clear();
        else if (c >= 0x20 && c < 0x7f) linea += QChar(c);
        else if (pagina == 19 && c == 0xd5) linea += u'€';
        else if (kLetras.count(c)) linea += kLetras.at(c);
        else linea += QStringLiteral("<%1>").arg(c, 2, 16, QLatin1Char('0'));
    }
    if (!linea.isEmpty()) r << linea;
    return r;
}

TEST(Ticket, LetrasEnLaPaginaDeCodigos) {
    const struct {
        QString texto;
        const char* cp858;
        const char* cp850;
    } casos[] = {
        {QStringLiteral("Año"), "41a46f", "41a46f"},
        {QStringLiteral("¿Cuánto? ¡Sí!"), "a84375a06e746f3f20ad53a121", "a84375a06e746f3f20ad53a121"},
        {QStringLiteral("éíóúÉÑ"), "82a1a2a390a5", "82a1a2a390a5"},
        {QStringLiteral("5 €"), "3520d5", "35203f"},
        {QStringLiteral("ı→"), "3f3f", "d53f"},
    };
    for (const auto& c : casos)
        EXPECT_EQ(QStringList({QString::fromLatin1(CodificaTicket(c.texto, PaginaCodigos::CP858).toHex()),
                               QString::fromLatin1(CodificaTicket(c.texto, PaginaCodigos::CP850).toHex())}),
                  QStringList({QString::fromLatin1(c.cp858), QString::fromLatin1(c.cp850)}))
            << c.texto.toStdString();
}

DatosTicket ticketDePrueba(bool contado) {
    DatosTicket t;
    t.negocio = QStringLiteral("Almacén Ñandú");
    t.direccion = QStringLiteral("Av. Güemes 12");
    t.numero = QStringLiteral("T0001-00000042");
    t.vendedor = QStringLiteral("José");
    t.fecha = QDate(2026, 11, 25);
    t.lineas = {{QStringLiteral("010001"), 2, QStringLiteral("Yerba mate 1 kg"), Dinero(1500), Dinero(3000)},
                {QStringLiteral("020001"), 0.5, QStringLiteral("Jamón cocido"), Dinero(9000), Dinero(4500)}};
    t.subtotal = Dinero(7500);
    t.total = Dinero(7500);
    t.suPago = Dinero(10000);
    t.formaPago = QStringLiteral("EFVO");
    t.abreCajon = contado;
    return t;
}

// Los elementos ubicados salen de arriba abajo, no en el orden de la lista.
DisenoTicket disenoDePrueba(const QString& puerto = {}) {
    DisenoTicket d;
    d.puerto = puerto;
    d.columnas = 40;
    d.lugares = QList<std::optional<QPointF>>(ElementosTicket().size());
    d.lugares[0] = QPointF(10, 2);   // Nombre Negocio
    d.lugares[7] = QPointF(40, 12);  // Fecha, a la derecha del número
    d.lugares[5] = QPointF(1, 12);   // Nro de Ticket
    d.lugares[8] = QPointF(1, 20);   // Datos del artículo
    d.lugares[13] = QPointF(30, 40); // Total
    d.lugares[16] = QPointF(30, 45); // Vuelto
    d.lugares[17] = QPointF(5, 60);  // Gracias
    return d;
}

TEST(Ticket, ElementosEnOrdenCorteYCajonEnContado) {
    const QStringList cuerpo = {"[inicio]",
                                "[pagina 19]",
                                "[alinea 1]",
                                "[negrita 1]",
                                "Almacén Ñandú",
                                "[negrita 0]",
                                "[alinea 0]",
                                "Nro Ticket : T0001-00000042",
                                "25/11/2026",
                                "010001 2 x 1,500.00",
                                "Yerba mate 1 kg                 3,000.00",
                                "020001 0.5 x 9,000.00",
                                "Jamón cocido                    4,500.00",
                                "[negrita 1]",
                                "Total                         $ 7,500.00",
                                "[negrita 0]",
                                "Vuelto                        $ 2,500.00",
                                "[alinea 1]",
                                "** Gracias por su Compra **",
                                "[alinea 0]",
                                "[corte 66 0]"};
    EXPECT_EQ(decodifica(ArmaTicket(ticketDePrueba(true), disenoDePrueba(), PaginaCodigos::CP858)),
              cuerpo + QStringList{"[cajon 0 25 250]"});
    // A cuenta corriente no se abre el cajón; en CP850 la orden de página cambia.
    QStringList cp850 = cuerpo;
    cp850[1] = QStringLiteral("[pagina 2]");
    EXPECT_EQ(decodifica(ArmaTicket(ticketDePrueba(false), disenoDePrueba(), PaginaCodigos::CP850), 2), cp850);
}

TEST(Ticket, PorUnPseudoTerminalComoPuertoSerie) {
    const int amo = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(amo, 0);
    ASSERT_EQ(grantpt(amo), 0);
    ASSERT_EQ(unlockpt(amo), 0);
    const QString esclavo = QString::fromLocal8Bit(ptsname(amo));
    const QByteArray bytes = ArmaTicket(ticketDePrueba(true), disenoDePrueba(), PaginaCodigos::CP858);
    EXPECT_EQ(AvisoDe([&] { EnviaTicket(esclavo, QStringLiteral("19200,n,8,1"), bytes); }), QString());
    QByteArray llegado;
    pollfd p{amo, POLLIN, 0};
    char buf[4096];
    while (llegado.size() < bytes.size() && poll(&p, 1, 2000) > 0) {
        const ssize_t n = read(amo, buf, sizeof buf);
        if (n <= 0) break;
        llegado.append(buf, n);
    }
    close(amo);
    EXPECT_EQ(llegado.toHex(), bytes.toHex());
    EXPECT_EQ(AvisoDe([&] { EnviaTicket(esclavo, QStringLiteral("rapido"), bytes); }),
              QStringLiteral("Los parámetros del puerto \"rapido\" no se entienden: escríbalos como 9600,n,8,1."));
}

// Lo que recibe un servidor en 127.0.0.1 mientras se envía el ticket.
QByteArray recibe(QTcpServer& s) {
    QByteArray r;
    if (!s.waitForNewConnection(3000)) return r;
    QTcpSocket* c = s.nextPendingConnection();
    while (c->state() == QAbstractSocket::ConnectedState || c->bytesAvailable() > 0) {
        if (c->bytesAvailable() == 0 && !c->waitForReadyRead(2000)) break;
        r += c->readAll();
    }
    return r;
}

class TicketImpreso : public prueba::PorMotorAlDia {
protected:
    // Un comprobante de dos líneas, con su movimiento de caja (contado), y el comercio.
    void prepara() override {
        almacen().ejecuta(QStringLiteral("INSERT INTO Empresa (NombreEmpresa, NombreFantasia, Direccion) VALUES "
                                         "('Razón Social', 'Almacén Ñandú', 'Av. Güemes 12')"));
        almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (idArticulo, Codigo, Descripcion) VALUES (1, '010001', 'Yerba'), "
                                         "(2, '020001', 'Jamón')"));
        almacen().ejecuta(QStringLiteral("INSERT INTO Usuarios (idUsuario, NombreCompleto) VALUES (7, 'José')"));
        almacen().ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, NombrePlantilla) VALUES "
                                         "(9, 'TICKET', 'IMPRESORA TICKETS PUERTO : COM1')"));
        almacen().ejecuta(QStringLiteral("INSERT INTO Comprobantes (idComprobante, Factura, idTipoComprobante, Fecha, FormaPago, SubTotal, "
                                         "Total, SuPago, idVendio) VALUES (5, 'T0001-00000042', 9, ?, 'EFVO', 7500, 7500, 10000, 7)"),
                          {QDate(2026, 11, 25)});
        almacen().ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, SubTotal, "
                                         "Descripcion) VALUES (5, 1, 2, 1500, 3000, 'Yerba mate 1 kg'), "
                                         "(5, 2, 0.5, 9000, 4500, 'Jamón cocido')"));
        almacen().ejecuta(QStringLiteral("INSERT INTO Caja (idComprobante, Fecha, Ingreso, Egreso) VALUES (5, ?, 7500, 0)"),
                          {QDate(2026, 11, 25)});
    }
};

// El comprobante registrado sale por la red tal como se armó; con la impresora apagada, el aviso
// lo dice y recuerda que el comprobante está registrado.
TEST_P(TicketImpreso, PorLaRedYConLaImpresoraApagada) {
    QTemporaryDir dir;
    const Configuracion conf(dir.path(), dir.filePath(QStringLiteral("u.conf")));
    QTcpServer servidor;
    ASSERT_TRUE(servidor.listen(QHostAddress::LocalHost));
    const QString puerto = QStringLiteral("127.0.0.1:%1").arg(servidor.serverPort());
    // Un rollo de 58 mm: las líneas se arman en 32 columnas.
    DisenoTicket diseno = disenoDePrueba(puerto);
    diseno.columnas = 32;
    GrabaDisenoTicket(conf, diseno);
    EXPECT_TRUE(EsComprobanteDeTicket(almacen(), 5));
    EXPECT_EQ(AvisoDe([&] { ImprimeTicket(almacen(), conf, 5); }), QString());
    EXPECT_EQ(decodifica(recibe(servidor)).mid(4, 15),
              (QStringList{"Almacén Ñandú", "[negrita 0]", "[alinea 0]", "Nro Ticket : T0001-00000042", "25/11/2026",
                           "010001 2 x 1,500.00", "Yerba mate 1 kg         3,000.00", "020001 0.5 x 9,000.00",
                           "Jamón cocido            4,500.00", "[negrita 1]", "Total                 $ 7,500.00",
                           "[negrita 0]", "Vuelto                $ 2,500.00",
                           "[alinea 1]", "** Gracias por su Compra **"}));
    servidor.close();
    EXPECT_EQ(AvisoDe([&] { ImprimeTicket(almacen(), conf, 5); }),
              QStringLiteral("La impresora de tickets (%1) no responde: Connection refused.\nEl comprobante quedó registrado: puede "
                             "volver a imprimirlo desde \"Reimpresion de documentos\".")
                  .arg(puerto));
    EXPECT_EQ(prueba::Filas(almacen(), QStringLiteral("SELECT count(*) FROM Comprobantes")), QStringList{"1"});
}

ORV_AMBOS_MOTORES(TicketImpreso);

// El cajón se abre cuando la venta entró a la caja con dinero que va al cajón: no con tarjeta ni
// en cuenta corriente.
class CajonDelTicket : public prueba::PorMotorAlDia {};

TEST_P(CajonDelTicket, SoloConDineroEnLaCaja) {
    const struct {
        const char* forma;
        bool caja;
        bool abre;
    } casos[] = {{"EFVO", true, true}, {"CHEQ", true, true}, {"TARJETA", true, false}, {"CTA CTE", false, false},
                 {"EFVO", false, false}};
    for (const auto& c : casos) {
        const qint64 id = almacen().inserta(
            QStringLiteral("INSERT INTO Comprobantes (Factura, Fecha, FormaPago, Total) VALUES ('B0001-00000001', '2026-11-20', ?, 100)"),
            {QString::fromLatin1(c.forma)}, QStringLiteral("idComprobante"));
        if (c.caja)
            almacen().ejecuta(QStringLiteral("INSERT INTO Caja (idComprobante, Fecha, Ingreso) VALUES (?, '2026-11-20', 100)"), {id});
        EXPECT_EQ(LeeDatosTicket(almacen(), id).abreCajon, c.abre) << c.forma << " " << c.caja;
    }
}

ORV_AMBOS_MOTORES(CajonDelTicket);

} // namespace
} // namespace orv

