#include "access/contrasenias.h"

#include <sodium.h>
#include <stdexcept>

namespace orv {

namespace {

void iniciaSodio() {
    static const bool listo = [] { return sodium_init() >= 0; }();
    if (!listo) throw std::runtime_error("no se pudo iniciar libsodium");
}

} // namespace

QString CifraContrasenia(const QString& clara) {
    iniciaSodio();
    const QByteArray texto = clara.toUtf8();
    char resumen[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str(resumen, texto.constData(), static_cast<unsigned long long>(texto.size()),
                          crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        throw std::runtime_error("no hay memoria suficiente para cifrar la contraseña");
    return QString::fromLatin1(resumen);
}

bool VerificaContrasenia(const QString& guardada, const QString& clara) {
    iniciaSodio();
    const QByteArray resumen = guardada.toLatin1();
    if (resumen.isEmpty() || resumen.size() >= crypto_pwhash_STRBYTES) return false;
    const QByteArray texto = clara.toUtf8();
    return crypto_pwhash_str_verify(resumen.constData(), texto.constData(),
                                    static_cast<unsigned long long>(texto.size())) == 0;
}

bool ContraseniaParaRecifrar(const QString& guardada) {
    iniciaSodio();
    const QByteArray resumen = guardada.toLatin1();
    if (resumen.isEmpty() || resumen.size() >= crypto_pwhash_STRBYTES) return true;
    return crypto_pwhash_str_needs_rehash(resumen.constData(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0;
}

} // namespace orv
