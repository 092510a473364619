#include "app/ui/pan_principal.h"

#include "shell/ventanas.h"
#include "store/formato.h"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orv {

QString PanPrincipal::tituloVentana(const QString& nombreUsuario) {
    return QStringLiteral("Orvanta ver %1.%2.%3 | Usuario : ")
               .arg(ORVANTA_VERSION_MAYOR)
               .arg(ORVANTA_VERSION_MENOR)
               .arg(ORVANTA_VERSION_REVISION) +
           nombreUsuario;
}

PanPrincipal::PanPrincipal(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf, const Reloj& reloj,
                           QWidget* padre)
    : QMainWindow(padre), almacen_(almacen), estado_(estado), conf_(conf), reloj_(reloj) {
    setObjectName(QStringLiteral("PanPrincipal"));
    setWindowTitle(tituloVentana(estado_.NombreUsuarioActual));

    auto* centro = new QWidget(this);
    auto* capa = new QVBoxLayout(centro);
    capa->setContentsMargins(32, 28, 32, 28);

    fecha_ = new QLabel(Formato(QVariant(reloj_.hoy()), QStringLiteral("long date")), centro);
    fecha_->setObjectName(QStringLiteral("Label11"));
    QFont f = fecha_->font();
    f.setPointSize(f.pointSize() + 4);
    f.setBold(true);
    fecha_->setFont(f);
    capa->addWidget(fecha_);
    capa->addSpacing(16);

    auto* datos = new QFormLayout;
    datos->setLabelAlignment(Qt::AlignRight);
    auto* lblAlmacen = new QLabel(estado_.almacenAbierto, centro);
    lblAlmacen->setObjectName(QStringLiteral("lblAlmacen"));
    lblAlmacen->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblAlmacen->setWordWrap(true);
    auto* terminal = new QLabel(QString::number(estado_.IdRed), centro);
    terminal->setObjectName(QStringLiteral("lblTerminal"));
    auto* usuario = new QLabel(estado_.NombreUsuarioActual, centro);
    usuario->setObjectName(QStringLiteral("lblUsuario"));
    auto* carpeta = new QLabel(estado_.carpetaDatos, centro);
    carpeta->setObjectName(QStringLiteral("lblCarpeta"));
    carpeta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    datos->addRow(QStringLiteral("Usuario :"), usuario);
    datos->addRow(QStringLiteral("Base de datos :"), lblAlmacen);
    datos->addRow(QStringLiteral("Carpeta de datos :"), carpeta);
    datos->addRow(QStringLiteral("Terminal :"), terminal);
    capa->addLayout(datos);
    capa->addStretch(1);

    setCentralWidget(centro);
    resize(900, 600);
    CentrarVentana(this);
}

} // namespace orv
