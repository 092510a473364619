#pragma once
// La secuencia de arranque sobre ventanas reales.

#include "app/arranque.h"
#include "shell/pan_principal.h"

#include <memory>

namespace orv {

class InterfazArranqueQt : public InterfazArranque {
public:
    explicit InterfazArranqueQt(const Reloj& reloj);
    ~InterfazArranqueQt() override;

    void mensaje(const QString& texto, const QString& titulo, Icono icono) override;
    bool pregunta(const QString& texto, const QString& titulo) override;
    void muestraPortada() override;
    int anchoPantalla() override;
    SeparadoresRegionales separadoresRegionales() override;
    bool login(Almacen& almacen, EstadoAplicacion& estado) override;
    void muestraVentana(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf) override;

    PanPrincipal* ventana() const { return ventana_.get(); }

private:
    const Reloj& reloj_;
    std::unique_ptr<PanPrincipal> ventana_;
};

} // namespace orv
