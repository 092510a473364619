#include "access/ui/pan_ed_usuario.h"

#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanEdUsuario::PanEdUsuario(const Almacen& almacen, std::optional<qint64> idUsuario, QWidget* padre)
    : QDialog(padre), id_(idUsuario) {
    setObjectName(QStringLiteral("panEdUsuario"));
    setWindowTitle(id_ ? QStringLiteral("Modificar usuario") : QStringLiteral("Nuevo usuario"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* campos = new QFormLayout;
    campos->setSpacing(8);
    txNomCompleto_ = new QLineEdit(this);
    txNomCompleto_->setObjectName(QStringLiteral("txNomCompleto"));
    txNomCompleto_->setMinimumWidth(280);
    txUser_ = new QLineEdit(this);
    txUser_->setObjectName(QStringLiteral("txUser"));
    txPass_ = new QLineEdit(this);
    txPass_->setObjectName(QStringLiteral("txPass"));
    txPass_->setEchoMode(QLineEdit::Password);
    auto* nota = new QLabel(id_ ? QStringLiteral("Déjela vacía para conservar la contraseña actual.")
                                : QStringLiteral("Obligatoria para un usuario nuevo."),
                            this);
    nota->setObjectName(QStringLiteral("lblNotaPass"));
    QFont chica = nota->font();
    chica.setPointSizeF(chica.pointSizeF() * 0.9);
    nota->setFont(chica);
    nota->setEnabled(false);
    cbNivel_ = new QComboBox(this);
    cbNivel_->setObjectName(QStringLiteral("cbNivel"));
    txComision_ = new QLineEdit(QStringLiteral("0"), this);
    txComision_->setObjectName(QStringLiteral("txComision"));
    txComision_->setMaximumWidth(90);

    campos->addRow(QStringLiteral("Nombre completo :"), txNomCompleto_);
    campos->addRow(QStringLiteral("Nombre de usuario :"), txUser_);
    campos->addRow(QStringLiteral("Contraseña :"), txPass_);
    campos->addRow(QString(), nota);
    campos->addRow(QStringLiteral("Nivel de acceso :"), cbNivel_);
    campos->addRow(QStringLiteral("Comisión % :"), txComision_);
    capa->addLayout(campos);

    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanEdUsuario::acepta);

    LlenaCombo(cbNivel_, almacen, QStringLiteral("SELECT idNivel, Nombre FROM Niveles ORDER BY Nombre"), {},
               QStringLiteral("Nombre"), QStringLiteral("idNivel"));
    cbNivel_->setCurrentIndex(-1);
    // Si el usuario ya no está, la pantalla queda vacía y al grabar se avisa "No encontrado!".
    if (id_)
        Intenta(this, [&] {
            if (const auto d = LeeUsuario(almacen, *id_)) {
                txNomCompleto_->setText(d->nombreCompleto);
                txUser_->setText(d->nombreUsuario);
                SelComboId(cbNivel_, d->idNivel);
                txComision_->setText(d->comision);
            }
        });
    adjustSize();
    CentrarVentana(this);
    txNomCompleto_->setFocus();
}

DatosUsuario PanEdUsuario::datos() const {
    DatosUsuario d;
    d.nombreCompleto = txNomCompleto_->text();
    d.nombreUsuario = txUser_->text();
    d.contrasenia = txPass_->text();
    d.idNivel = cbNivel_->currentIndex() >= 0 ? cbNivel_->currentData() : QVariant();
    d.comision = txComision_->text().trimmed();
    return d;
}

void PanEdUsuario::acepta() {
    if (Intenta(this, [&] { ValidaUsuario(datos(), !id_.has_value()); })) accept();
}

} // namespace orv
