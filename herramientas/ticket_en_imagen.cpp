#include "ticket_en_imagen.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QPainter>
#include <QStringDecoder>
#include <vector>

namespace {

struct Renglon {
    QString texto;
    bool negrita = false;
    int alineacion = 0; // 0 izquierda, 1 centro, 2 derecha
};

struct Papel {
    std::vector<Renglon> renglones;
    bool corte = false;
    bool cajon = false;
};

// Recorre los bytes: cada orden cambia el estado; el texto se junta hasta el salto de línea.
Papel lee(const QByteArray& b) {
    Papel p;
    QByteArray linea;
    bool negrita = false;
    int alineacion = 0;
    QStringDecoder pagina("IBM00858");
    const auto cierra = [&] {
        p.renglones.push_back({pagina.decode(linea), negrita, alineacion});
        linea.clear();
    };
    for (qsizetype i = 0; i < b.size(); ++i) {
        const auto c = static_cast<unsigned char>(b[i]);
        const auto arg = [&](int k) { return i + k < b.size() ? int(static_cast<unsigned char>(b[i + k])) : -1; };
        if (c == 0x1b && arg(1) == '@') {
            negrita = false, alineacion = 0, i += 1;
        } else if (c == 0x1b && arg(1) == 't') {
            pagina = QStringDecoder(arg(2) == 2 ? "IBM850" : "IBM00858"), i += 2;
        } else if (c == 0x1b && arg(1) == 'E') {
            negrita = arg(2) != 0, i += 2;
        } else if (c == 0x1b && arg(1) == 'a') {
            alineacion = arg(2), i += 2;
        } else if (c == 0x1b && arg(1) == 'p') {
            p.cajon = true, i += 4;
        } else if (c == 0x1d && arg(1) == 'V') {
            p.corte = true, i += arg(2) >= 65 ? 3 : 2;
        } else if (c == '\n') {
            cierra();
        } else {
            linea += char(c);
        }
    }
    if (!linea.isEmpty()) cierra();
    return p;
}

} // namespace

QImage TicketEnImagen(const QByteArray& bytes, int columnas) {
    const Papel p = lee(bytes);
    QFont fuente = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fuente.setPointSize(11);
    QFont negrita = fuente;
    negrita.setBold(true);
    const QFontMetrics m(fuente);
    const int margen = 24, ancho = m.horizontalAdvance(QString(columnas, u'M')) + 2 * margen;
    const int alto = margen * 2 + m.lineSpacing() * int(p.renglones.size() + 4);
    QImage img(ancho + 40, alto + 40, QImage::Format_RGB32);
    img.fill(QColor(0xd9, 0xdd, 0xe2));
    QPainter pintor(&img);
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.fillRect(QRect(20, 20, ancho, alto), Qt::white);
    int y = 20 + margen;
    for (const Renglon& r : p.renglones) {
        pintor.setFont(r.negrita ? negrita : fuente);
        const int flags = r.alineacion == 1 ? Qt::AlignHCenter : r.alineacion == 2 ? Qt::AlignRight : Qt::AlignLeft;
        pintor.drawText(QRect(20 + margen, y, ancho - 2 * margen, m.lineSpacing()), flags | Qt::AlignVCenter, r.texto);
        y += m.lineSpacing();
    }
    pintor.setFont(fuente);
    pintor.setPen(QColor(0x6f, 0x82, 0x96));
    y += m.lineSpacing();
    if (p.corte) {
        pintor.setPen(QPen(QColor(0x6f, 0x82, 0x96), 1, Qt::DashLine));
        pintor.drawLine(20, y, 20 + ancho, y);
        pintor.drawText(QRect(20, y + 4, ancho, m.lineSpacing()), Qt::AlignHCenter, QStringLiteral("corte del papel"));
        y += m.lineSpacing() + 4;
    }
    if (p.cajon) pintor.drawText(QRect(20, y + 4, ancho, m.lineSpacing()), Qt::AlignHCenter, QStringLiteral("pulso del cajón"));
    return img;
}
