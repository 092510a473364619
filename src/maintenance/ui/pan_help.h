#pragma once
// "Ayuda": los temas a la izquierda y la página del tema elegido a la derecha. Los vínculos entre
// páginas llevan al otro tema.

#include "maintenance/ayuda.h"

#include <QDialog>

class QListWidget;
class QTextBrowser;

namespace orv {

class panHelp : public QDialog {
    Q_OBJECT
public:
    // Abre en el tema `tema` (un índice de TemasAyuda), o en el primero si no hay.
    explicit panHelp(int tema = -1, QWidget* padre = nullptr);
    // Los nombres de objeto desde un control (el que recibe la tecla) hacia afuera: su panel, su
    // ventana y la ventana que la abrió.
    static QStringList nombresDesde(const QWidget* control);
    void muestraTema(int indice);
    int temaActual() const;
    QListWidget* temas() const { return lbl_; }
    QTextBrowser* texto() const { return rt_; }

private:
    QList<TemaAyuda> temas_;
    QListWidget* lbl_;
    QTextBrowser* rt_;
};

} // namespace orv
