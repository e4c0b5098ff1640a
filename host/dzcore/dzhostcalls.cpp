#include "dzhostcalls.h"

DzHostCallHook dzHostCallHook = nullptr;
