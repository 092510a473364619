#pragma once
// Las cajas de mensaje se responden con el apoyo común de las ventanas modales.
#include "apoyo/modal.h"
