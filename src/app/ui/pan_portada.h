#pragma once
// Portada que se muestra al arrancar: aparece, espera y se va sola. Esc la cierra en el acto.

#include <QDialog>

class QPropertyAnimation;
class QTimer;

namespace orv {

class PanPortada : public QDialog {
    Q_OBJECT
public:
    static constexpr int kDemoraMs = 2700;

    explicit PanPortada(int demoraMs = kDemoraMs, QWidget* padre = nullptr);

    // Duración de cada fundido (0: sin fundido).
    void setFundidoMs(int ms) { fundidoMs_ = ms; }

protected:
    void showEvent(QShowEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    void termina();

    QTimer* reloj_;
    QPropertyAnimation* fundido_;
    int fundidoMs_ = 250;
    bool terminando_ = false;
};

} // namespace orv
