#pragma once
// El "hoy" del sistema sale de un único reloj inyectable, para que las pruebas fijen la fecha.

#include <QDate>
#include <QDateTime>

namespace orv {

class Reloj {
public:
    virtual ~Reloj() = default;
    virtual QDateTime ahora() const { return QDateTime::currentDateTime(); }
    QDate hoy() const { return ahora().date(); }
};

class RelojFijo : public Reloj {
public:
    explicit RelojFijo(QDateTime momento) : momento_(std::move(momento)) {}
    QDateTime ahora() const override { return momento_; }
    void fija(const QDateTime& m) { momento_ = m; }

private:
    QDateTime momento_;
};

} // namespace orv
