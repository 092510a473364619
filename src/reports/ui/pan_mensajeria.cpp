#include "reports/ui/pan_mensajeria.h"

#include "reports/correo.h"
#include "reports/html_consulta.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"
#include "store/formato.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QNetworkInterface>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

namespace orv {

bool EstaConectado() {
    for (const QNetworkInterface& i : QNetworkInterface::allInterfaces()) {
        const auto f = i.flags();
        if (f.testFlag(QNetworkInterface::IsUp) && f.testFlag(QNetworkInterface::IsRunning) &&
            !f.testFlag(QNetworkInterface::IsLoopBack) && !i.addressEntries().isEmpty())
            return true;
    }
    return false;
}

PanConfInt::PanConfInt(const Configuracion& conf, QWidget* padre) : QDialog(padre), conf_(conf) {
    setObjectName(QStringLiteral("panConfInt"));
    setWindowTitle(QStringLiteral("Configuración del correo"));
    setModal(true);
    const DatosCorreo d = LeeDatosCorreo(conf_);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 16, 18, 12);
    const auto campo = [this](const char* nombre, const QString& valor) {
        auto* e = new QLineEdit(valor, this);
        e->setObjectName(QString::fromLatin1(nombre));
        e->setMinimumWidth(300);
        return e;
    };
    auto* envio = new QGroupBox(QStringLiteral("Envío"), this);
    auto* fe = new QFormLayout(envio);
    destino_ = campo("txEmailDestino", d.destino);
    destinoNombre_ = campo("txEmailDestinoNombre", d.destinoNombre);
    de_ = campo("txEmailDe", d.de);
    deNombre_ = campo("txEmailDeNombre", d.deNombre);
    titulo_ = campo("txEmailTituloMensaje", d.tituloMensaje);
    fe->addRow(QStringLiteral("E-mail destino :"), destino_);
    fe->addRow(QStringLiteral("Nombre del destino :"), destinoNombre_);
    fe->addRow(QStringLiteral("E-mail de :"), de_);
    fe->addRow(QStringLiteral("Nombre de :"), deNombre_);
    fe->addRow(QStringLiteral("Título del mensaje :"), titulo_);
    capa->addWidget(envio);

    auto* servidor = new QGroupBox(QStringLiteral("Servidor"), this);
    auto* fs = new QFormLayout(servidor);
    smtp_ = campo("txEmailSMTP", d.smtp);
    smtp_->setPlaceholderText(QStringLiteral("smtp.proveedor.com.ar:587"));
    chkAut_ = new QCheckBox(QStringLiteral("El servidor pide usuario y clave"), this);
    chkAut_->setObjectName(QStringLiteral("chkAut"));
    chkAut_->setChecked(d.autenticacion);
    usuario_ = campo("txAutUser", d.usuario);
    clave_ = campo("txAutPass", QString());
    clave_->setEchoMode(QLineEdit::Password);
    notaClave_ = new QLabel(d.clave.isEmpty() ? QStringLiteral("No hay clave guardada.")
                                              : QStringLiteral("Vacía conserva la clave guardada."),
                            this);
    notaClave_->setStyleSheet(QStringLiteral("color: #5b6b7b;"));
    fs->addRow(QStringLiteral("Servidor SMTP :"), smtp_);
    fs->addRow(QString(), chkAut_);
    fs->addRow(QStringLiteral("Usuario :"), usuario_);
    fs->addRow(QStringLiteral("Clave :"), clave_);
    fs->addRow(QString(), notaClave_);
    capa->addWidget(servidor);
    const auto habilita = [this](bool si) {
        usuario_->setEnabled(si);
        clave_->setEnabled(si);
    };
    habilita(d.autenticacion);
    connect(chkAut_, &QCheckBox::toggled, this, habilita);

    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanConfInt::acepta);
    resize(520, sizeHint().height());
    CentrarVentana(this);
    destino_->setFocus();
}

void PanConfInt::acepta() {
    DatosCorreo d;
    d.destino = destino_->text().trimmed();
    d.destinoNombre = destinoNombre_->text().trimmed();
    d.de = de_->text().trimmed();
    d.deNombre = deNombre_->text().trimmed();
    d.smtp = smtp_->text().trimmed();
    d.tituloMensaje = titulo_->text();
    d.usuario = usuario_->text().trimmed();
    d.autenticacion = chkAut_->isChecked();
    d.clave = clave_->text();
    if (Intenta(this, [&] { GrabaDatosCorreo(conf_, d, !d.clave.isEmpty()); })) accept();
}

PanMensajeria::PanMensajeria(const Almacen& almacen, const Configuracion& conf, const Reloj& reloj, QWidget* padre)
    : QDialog(padre), almacen_(almacen), conf_(conf), reloj_(reloj) {
    setObjectName(QStringLiteral("panMensajeria"));
    setWindowTitle(QStringLiteral("Modulo de envios de e-mail"));
    setModal(true);
    estaConectado = [] { return EstaConectado(); };
    envia = [](const DatosCorreo& d, const QString& para, const QString& asunto, const QString& cuerpo,
               const QString& nombre, const QString& adjunto) { EnviaMail(d, para, asunto, cuerpo, nombre, adjunto); };

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 16, 18, 12);
    capa->setSpacing(12);

    auto* exportar = new QGroupBox(QStringLiteral("Información para la casa central"), this);
    auto* ve = new QVBoxLayout(exportar);
    auto* periodo = new QHBoxLayout;
    desde_ = CampoFecha(QStringLiteral("DTPicker2"), exportar);
    hasta_ = CampoFecha(QStringLiteral("DTPicker3"), exportar);
    desde_->setDate(reloj_.hoy());
    hasta_->setDate(reloj_.hoy());
    periodo->addWidget(new QLabel(QStringLiteral("Desde :"), exportar));
    periodo->addWidget(desde_);
    periodo->addSpacing(10);
    periodo->addWidget(new QLabel(QStringLiteral("Hasta :"), exportar));
    periodo->addWidget(hasta_);
    periodo->addStretch(1);
    ve->addLayout(periodo);
    const char* textos[4] = {"Exportar Lista de Precios y Cantidades Stock", "Exportar Ventas",
                             "Exportar Movimientos de Stock", "Exportar Resumen x Clientes"};
    for (int i = 0; i < 4; ++i) {
        check_[i] = new QCheckBox(QString::fromUtf8(textos[i]), exportar);
        check_[i]->setObjectName(QStringLiteral("Check%1").arg(i + 1));
        ve->addWidget(check_[i]);
    }
    capa->addWidget(exportar);

    auto* notificaciones = new QGroupBox(QStringLiteral("Notificaciones"), this);
    auto* vn = new QHBoxLayout(notificaciones);
    auto* avisos = new QPushButton(QStringLiteral("Notificaciones..."), notificaciones);
    avisos->setObjectName(QStringLiteral("cmdNotificaciones"));
    avisos->setAutoDefault(false);
    vn->addWidget(avisos);
    vn->addStretch(1);
    capa->addWidget(notificaciones);
    connect(avisos, &QPushButton::clicked, this,
            [this] { Mensaje(QStringLiteral("En construcción"), QStringLiteral("Atención"), Icono::Informacion, this); });

    auto* botones = new QHBoxLayout;
    const auto boton = [this, botones](const char* nombre, const QString& texto, void (PanMensajeria::*accion)()) {
        auto* b = new QPushButton(texto, this);
        b->setObjectName(QString::fromLatin1(nombre));
        b->setAutoDefault(false);
        botones->addWidget(b);
        connect(b, &QPushButton::clicked, this, accion);
        return b;
    };
    boton("BotCfgInt", QStringLiteral("Configurar"), &PanMensajeria::configurar);
    boton("Command28", QStringLiteral("Conectar"), &PanMensajeria::conectar);
    botones->addStretch(1);
    boton("BotConn", QStringLiteral("Enviar"), &PanMensajeria::enviar)->setDefault(true);
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    cerrar->setObjectName(QStringLiteral("cmdCerrar"));
    cerrar->setAutoDefault(false);
    botones->addWidget(cerrar);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::reject);
    capa->addLayout(botones);
    resize(540, sizeHint().height());
    CentrarVentana(this);
}

QString PanMensajeria::archivoEnvio() const { return QDir(conf_.carpetaDatos()).filePath(QStringLiteral("envio.htm")); }

void PanMensajeria::configurar() {
    // Leer la configuración puede mudar una clave vieja a su archivo, y eso puede fallar.
    Intenta(this, [&] {
        PanConfInt d(conf_, this);
        d.exec();
    });
}

void PanMensajeria::conectar() {
    if (estaConectado()) {
        Mensaje(QStringLiteral("Ya está conectado a internet"), QStringLiteral("Atención"), Icono::Exclamacion, this);
        return;
    }
    // Sin marcado telefónico: la conexión es la de la red de la máquina.
    Mensaje(QStringLiteral("No hay conexión a internet: conecte el equipo a la red y vuelva a intentar."),
            QStringLiteral("Atención"), Icono::Exclamacion, this);
}

void PanMensajeria::enviar() {
    DatosCorreo d;
    if (!Intenta(this, [&] { d = LeeDatosCorreo(conf_); })) return;
    if (d.destino.trimmed().isEmpty()) {
        MensajeError(QStringLiteral("Verificar datos de configuración!"), this);
        return;
    }
    const QDate desde = desde_->date();
    const QDate hasta = hasta_->date();
    const QVariantList periodo{desde, hasta};
    struct Seccion {
        const char* titulo;
        const char* sql;
        bool conPeriodo;
    };
    const Seccion secciones[4] = {
        {"Lista de Precios / Stock", "Select * from ConsultaArticulos order by codigo", false},
        {"Ventas", "Select * from ConsultaDetalles where FECDETALLE >= ? and FECDETALLE <= ? order by idComprobante", true},
        {"Movimientos de Stock",
         "Select * from ConsultaMovimientosStock where fecha >= ? and fecha <= ? order by idMovimientoStock", true},
        {"Registro de Comisiones vendedores", "Select * from ConsultaComisiones where fecha >= ? and fecha <= ?", true}};
    Intenta(this, [&] {
        QString html;
        for (int i = 0; i < 4; ++i)
            if (check_[i]->isChecked())
                html += HtmlDeConsulta(almacen_, QString::fromUtf8(secciones[i].titulo), QString::fromLatin1(secciones[i].sql),
                                       secciones[i].conPeriodo ? periodo : QVariantList{}, 700, true, reloj_.hoy());
        const QString archivo = archivoEnvio();
        if (QFile::exists(archivo) && !QFile::remove(archivo))
            throw Aviso(QStringLiteral("No se pudo borrar el archivo ") + archivo);
        QSaveFile f(archivo);
        const QByteArray pagina = PaginaHtml(d.tituloMensaje, html).toUtf8();
        if (!f.open(QIODevice::WriteOnly) || f.write(pagina) < 0 || !f.commit())
            throw Aviso(QStringLiteral("No se pudo escribir el archivo ") + archivo);
        envia(d, d.destino, d.tituloMensaje,
              QStringLiteral("Informacion de ") + FechaTexto(desde) + QStringLiteral(" al ") + FechaTexto(hasta),
              d.destinoNombre, archivo);
        Mensaje(QStringLiteral("Información enviada a ") + d.destino, QStringLiteral("Envío"), Icono::Informacion, this);
    });
}

} // namespace orv
