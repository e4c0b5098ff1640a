// dzclock.h - the scene's current time and the epoch of cached values. Private to dzcore.
// A cache is valid while its epoch equals g_valueEpoch; changing the time starts a new epoch.
#pragma once

#include "dztime.h"

extern DzTime g_sceneTime;
extern unsigned g_valueEpoch; // never 0, the mark of an invalid cache

void noteSceneChange(); // counts the change and lets the scene announce it once
