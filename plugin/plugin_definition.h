// plugin_definition.h - the two functions by which the host takes the plug-in in.
// They are all that the library exports (quillon.map, quillon.def).
#pragma once

#include "dzplugin.h"
#include "dzversion.h"

extern "C" {
// The oldest interface that the plug-in can be loaded by.
DZEXPORT DzVersion getSDKVersion();
// Name, author, version, description and class factories. Lives as long as the library is loaded;
// the caller does not free it.
DZEXPORT DzPlugin* getPluginDefinition();
}
