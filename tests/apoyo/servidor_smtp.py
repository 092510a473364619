#!/usr/bin/python3
# Servidor SMTP de prueba en 127.0.0.1: guarda cada mensaje recibido como JSON (remitente,
# destinatarios, encabezados, texto y adjuntos en base64) en una carpeta.
#   servidor_smtp.py PUERTO CARPETA [USUARIO CLAVE]
# Con usuario y clave exige AUTH (PLAIN o LOGIN) sin TLS. Escribe "LISTO" cuando escucha.
import base64
import email
import email.policy
import json
import os
import sys
import time

from aiosmtpd.controller import Controller
from aiosmtpd.smtp import AuthResult

puerto = int(sys.argv[1])
carpeta = sys.argv[2]
usuario = sys.argv[3] if len(sys.argv) > 4 else None
clave = sys.argv[4] if len(sys.argv) > 4 else None


class Guardar:
    def __init__(self):
        self.n = 0

    async def handle_DATA(self, server, session, envelope):
        m = email.message_from_bytes(envelope.content, policy=email.policy.default)
        datos = {
            "de": envelope.mail_from,
            "para": envelope.rcpt_tos,
            "encabezados": {k: str(v) for k, v in m.items()},
            "texto": "",
            "adjuntos": [],
            "usuario": session.auth_data.login.decode() if session.auth_data else None,
        }
        for parte in m.walk():
            if parte.is_multipart():
                continue
            if parte.get_filename():
                datos["adjuntos"].append({"nombre": parte.get_filename(),
                                          "contenido": base64.b64encode(parte.get_payload(decode=True)).decode()})
            elif parte.get_content_type() == "text/plain":
                datos["texto"] = parte.get_content()
        self.n += 1
        ruta = os.path.join(carpeta, "mensaje%d.json" % self.n)
        with open(ruta + ".tmp", "w", encoding="utf-8") as f:
            json.dump(datos, f, ensure_ascii=False)
        os.rename(ruta + ".tmp", ruta)
        return "250 OK"


def autentica(server, session, envelope, mechanism, auth_data):
    ok = auth_data.login.decode() == usuario and auth_data.password.decode() == clave
    return AuthResult(success=ok, handled=False, auth_data=auth_data)


opciones = {}
if usuario is not None:
    opciones = dict(authenticator=autentica, auth_required=True, auth_require_tls=False)
c = Controller(Guardar(), hostname="127.0.0.1", port=puerto, **opciones)
c.start()
print("LISTO", flush=True)
try:
    while True:
        time.sleep(1)
except KeyboardInterrupt:
    pass
finally:
    c.stop()
