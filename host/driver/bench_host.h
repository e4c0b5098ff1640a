// bench_host.h - the host's own doings for scripts:
//   plugins()         [{name, author, version, description, sdkVersion, file, factories}], where
//                     factories is [{className, guid}]
//   startPane()   stopPane()   restartPlugin()
//                     the plug-ins' panes; the first start gives the pane
//   urls()            addresses that the host was asked to open
//   browsedFolders()  folders that the content library pane was asked for
//   menu(label...)    chooses an entry of the menu bar: menu("Help", "Guide"); false: no such one
//   wait(ms)          runs the event loop
#pragma once

class QScriptValue;

namespace quillon {

void addHostFunctions(QScriptValue bench);

} // namespace quillon
