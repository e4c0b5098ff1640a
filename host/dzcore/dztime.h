// dztime.h - scene time: an integer number of ticks, 4800 a second.
#pragma once

#include "dzcore_export.h"

typedef int DzTime;

static const int DZ_TICKS_PER_SECOND = 4800;
