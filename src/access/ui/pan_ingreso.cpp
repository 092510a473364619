#include "access/ui/pan_ingreso.h"

#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#ifdef Q_OS_UNIX
#include <pwd.h>
#include <unistd.h>
#endif

namespace orv {

QString PanIngreso::usuarioDelSistema() {
    QString nombre = qEnvironmentVariable("USER");
    if (nombre.isEmpty()) nombre = qEnvironmentVariable("USERNAME");
    if (nombre.isEmpty()) nombre = qEnvironmentVariable("LOGNAME");
#ifdef Q_OS_UNIX
    if (nombre.isEmpty())
        if (const passwd* pw = getpwuid(geteuid())) nombre = QString::fromLocal8Bit(pw->pw_name);
#endif
    return nombre;
}

PanIngreso::PanIngreso(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panIngreso"));
    setWindowTitle(QStringLiteral("Ingreso al sistema"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(24, 20, 24, 16);
    capa->setSpacing(12);

    auto* titulo = new QLabel(QStringLiteral("Orvanta"), this);
    QFont f = titulo->font();
    f.setPointSize(f.pointSize() + 8);
    f.setBold(true);
    titulo->setFont(f);
    capa->addWidget(titulo);

    auto* campos = new QFormLayout;
    campos->setSpacing(8);
    txUser_ = new QLineEdit(this);
    txUser_->setObjectName(QStringLiteral("txUser"));
    txPass_ = new QLineEdit(this);
    txPass_->setObjectName(QStringLiteral("txPass"));
    txPass_->setEchoMode(QLineEdit::Password);
    txUser_->setMinimumWidth(240);
    campos->addRow(QStringLiteral("Nombre del usuario:"), txUser_);
    campos->addRow(QStringLiteral("Contraseña:"), txPass_);
    capa->addLayout(campos);

    auto* sistema = new QLabel(QStringLiteral("Usuario de Windows : ") + usuarioDelSistema(), this);
    sistema->setObjectName(QStringLiteral("Label5"));
    sistema->setEnabled(false);
    capa->addWidget(sistema);

    aceptar_ = BotonesAlPie(this, capa);
    connect(aceptar_, &QPushButton::clicked, this, &PanIngreso::acepta);

    pausa_ = new QTimer(this);
    pausa_->setSingleShot(true);
    pausa_->setInterval(1000);
    connect(pausa_, &QTimer::timeout, this, &PanIngreso::verifica);

    adjustSize();
    CentrarVentana(this);
    txUser_->setFocus();
}

void PanIngreso::fijaUsuario(const QString& nombre) {
    txUser_->setText(nombre);
    txPass_->setFocus();
}

void PanIngreso::fijaPausa(int ms) { pausa_->setInterval(ms); }

void PanIngreso::habilita(bool si) {
    txUser_->setEnabled(si);
    txPass_->setEnabled(si);
    aceptar_->setEnabled(si);
}

void PanIngreso::acepta() {
    if (pausa_->isActive()) return;
    habilita(false);
    pausa_->start();
}

void PanIngreso::verifica() {
    // Un error del almacén se dice y deja intentar de nuevo.
    if (!Intenta(this, [&] { usuario_ = Ingresa(almacen_, txUser_->text(), txPass_->text()); })) {
        usuario_.reset();
        habilita(true);
        return;
    }
    if (usuario_) {
        accept();
        return;
    }
    Mensaje(QStringLiteral("Usuario y/o contraseña inválido/a !!"), QStringLiteral("Error"), Icono::Stop, this);
    txUser_->clear();
    txPass_->clear();
    habilita(true);
    txUser_->setFocus();
}

void PanIngreso::reject() {
    pausa_->stop();
    usuario_.reset();
    QDialog::reject();
}

} // namespace orv
