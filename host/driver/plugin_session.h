// plugin_session.h - the plug-ins of this run: their libraries, actions and panes.
// Owns: the loaders. Libraries stay loaded to the end of the process.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class DzPane;
class DzPluginLoader;

namespace quillon {

bool loadPlugins(const QStringList& files, QString* why); // false: *why names the file
QList<DzPluginLoader*> loadedPlugins();

void addPluginActions(); // once the main window is there

// Creates every pane class of the plug-ins that has no pane yet and shows it, in the group where it
// was when it was stopped, also in an earlier run, if there is such a group. The first one; null:
// there is none.
DzPane* startPanes();
void stopPanes(); // destroys them, as closing the host would; the actions stay

} // namespace quillon
