#pragma once
// Contraseñas de los usuarios: se guardan sólo como resumen Argon2id (libsodium), con los
// límites "interactivos". Nunca se guarda ni se muestra la contraseña en claro.

#include <QString>

namespace orv {

// Resumen listo para Usuarios.Contrasenia (texto ASCII con el algoritmo, los parámetros y la sal).
// Lanza std::runtime_error si libsodium no puede reservar la memoria.
QString CifraContrasenia(const QString& clara);
// Verdadero si la contraseña corresponde al resumen guardado. Un resumen vacío o dañado no
// corresponde a ninguna contraseña.
bool VerificaContrasenia(const QString& guardada, const QString& clara);
// El resumen fue hecho con otros parámetros y conviene rehacerlo en el próximo ingreso.
bool ContraseniaParaRecifrar(const QString& guardada);

} // namespace orv
