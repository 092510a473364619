#include "access/ui/pan_supervisor_inicial.h"

#include "access/ingreso.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanSupervisorInicial::PanSupervisorInicial(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panSupervisorInicial"));
    setWindowTitle(QStringLiteral("Supervisor del sistema"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(24, 20, 24, 16);
    capa->setSpacing(12);
    auto* texto = new QLabel(QStringLiteral(
        "Ésta base de datos todavía no tiene contraseñas.\n"
        "Elija el nombre de usuario y la contraseña del supervisor, que podrá entrar a todo el sistema "
        "y dar de alta a los demás usuarios."), this);
    texto->setObjectName(QStringLiteral("lblExplicacion"));
    texto->setWordWrap(true);
    texto->setMinimumWidth(380);
    capa->addWidget(texto);

    auto* campos = new QFormLayout;
    campos->setSpacing(8);
    txUser_ = new QLineEdit(NombreSupervisorInicial(almacen_), this);
    txUser_->setObjectName(QStringLiteral("txUser"));
    txPass_ = new QLineEdit(this);
    txPass_->setObjectName(QStringLiteral("txPass"));
    txPass_->setEchoMode(QLineEdit::Password);
    txPass2_ = new QLineEdit(this);
    txPass2_->setObjectName(QStringLiteral("txPass2"));
    txPass2_->setEchoMode(QLineEdit::Password);
    campos->addRow(QStringLiteral("Nombre del usuario:"), txUser_);
    campos->addRow(QStringLiteral("Contraseña:"), txPass_);
    campos->addRow(QStringLiteral("Repita la contraseña:"), txPass2_);
    capa->addLayout(campos);

    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanSupervisorInicial::acepta);

    adjustSize();
    CentrarVentana(this);
    txPass_->setFocus();
}

QString PanSupervisorInicial::usuario() const { return txUser_->text().trimmed(); }

void PanSupervisorInicial::acepta() {
    if (Intenta(this, [&] { FijaSupervisorInicial(almacen_, txUser_->text(), txPass_->text(), txPass2_->text()); })) {
        accept();
        return;
    }
    // Las contraseñas se vuelven a escribir las dos.
    txPass_->clear();
    txPass2_->clear();
    txPass_->setFocus();
}

} // namespace orv
