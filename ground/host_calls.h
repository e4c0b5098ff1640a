// host_calls.h - one function for each call of the host whose spelling or meaning is uncertain.
// Whoever builds against the real SDK compares these with its headers first: a wrong guess is
// mended here and nowhere else. Beside these stand gzip (host_gzip.h), the headers of the value
// types (host_types.h), and what a class of ours has to override or set itself (plugin/). Pointers
// are not null unless told.
#pragma once

#include "ground/host_types.h"

class DzAction;
class DzElement;
class DzFloatProperty;
class DzNode;
class DzProgress;
class DzProperty;
class QString;

namespace quillon {

// Whether Cancel was pressed; false without a progress.
// Likely: isCancelled() const; scripts ask progressIsCancelled(). Else a static function, or
// another name.
bool isCancelled(DzProgress* progress);

// The icon that menus and tool bars show; an image file that exists.
// Likely: setIconFile(QString), since scripts have a property iconFile. Else
// setProperty("iconFile", path), or the toolkit's setIcon().
void setIconFile(DzAction* action, const QString& path);

// The second state, beside the lock, that the tools set on a bone's translation.
// Guessed: it is the clamped flag. Else it is that the channel overrides its controllers,
// isOverridingControllers() and setOverrideControllers().
bool hasSecondLimit(const DzFloatProperty* channel);
void setSecondLimit(DzFloatProperty* channel, bool on);

// The property of exactly this name; null: there is none.
// Known: a second argument says whether case counts. What counts without it is unknown.
DzProperty* findExactProperty(const DzElement* element, const QString& name);

// The low and the high corner.
// Likely: getMin() and getMax(). Else public members.
DzVec3 lowCorner(const DzBox3& box);
DzVec3 highCorner(const DzBox3& box);

// Known: a second argument makeDefault, false by default. It is true here: either it makes the
// point the default, too, or it says that the geometry stays. Callers place the node again
// afterwards, so that both serve. Whether undo takes it back is unknown.
void setOriginPoint(DzNode* node, const DzVec3& originCm);

// Lets the pane that lists content show a folder, by a script: the pane belongs to another plug-in
// and has no header. Forward slashes; with a null one the pane is only looked for. Nothing happens
// where there is no such pane.
// Known: findPane("DzContentLibraryPane") of the pane manager. Guessed: the pane's slot
// browseToNativeFolder(path). Else the script ends with an error that nobody sees.
void showFolderInContentPane(const QString& folder);

} // namespace quillon
