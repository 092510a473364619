#include "apoyo/base_prueba.h"
#include "store/almacen.h"

using namespace orv;
using namespace orv::prueba;

class AlmacenBasico : public PorMotor {};
ORV_AMBOS_MOTORES(AlmacenBasico);

TEST_P(AlmacenBasico, TransaccionSinConfirmarSeDeshace) {
    almacen().ejecuta(QStringLiteral("CREATE TABLE t (x INTEGER)"));
    {
        Transaccion t(almacen());
        almacen().ejecuta(QStringLiteral("INSERT INTO t (x) VALUES (?)"), {1});
    }
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT count(*) FROM t")).toInt(), 0);
}
