#include "shell/mensajes.h"
