// figure_lookup.h - from names and numbers to bones, controls and their links.
// Numbers are those of bone_table.h and control_tables.h; "active" means the table of the current
// generation (figure_kind.h). Null and -1 mean absent, which every tool skips without a message.
// Nothing here is read from a figure but the bone or property itself.
#pragma once

#include "figure/name_index.h"

#include <bitset>

class DzBone;
class DzFloatProperty;
class DzNode;
class DzProperty;

namespace quillon {

// Builds the indexes of all tables. Called when the pane is constructed; without it the first
// lookup does the same.
void buildFigureTables();

// ---- bones
int boneIndex(const QString& name); // bone number, -1 when absent; exact
const QString& boneName(int boneNumber); // 0..169
DzBone* findBone(const QString& name, const DzNode* node); // on the node's skeleton
DzBone* findBone(int boneNumber, const DzNode* node);

// ---- controls
int controlCount(); // of the active table: 250 or 248
int controlIndex(const QString& name); // number in the active table, -1 when absent; exact
const QString& controlName(int controlNumber); // in the active table
bool isBodyControl(const QString& name); // member of the active table

// A property of the node's skeleton, else the value channel of the morph of that name on the
// skeleton's object. A morph's channel is called "Value": keep the name that was asked for.
DzFloatProperty* findControl(const QString& name, const DzNode* node);
// A property of the node itself, without the morphs.
DzFloatProperty* findOwnControl(const QString& name, const DzNode* node);
// The name by which the tables know a control: its own, or that of the morph it belongs to.
QString controlNameOf(const DzProperty* property);

// ---- links
const char* boneControlRow(int boneNumber); // active row, ".name.name."
// Whether the active row of the bone names the control; false for a number outside 0..169.
bool controlDrivesBone(const QString& controlName, int boneNumber);
// All bones whose active row names the control, by bone number; for a control of the active table.
typedef std::bitset<kBoneCount> BoneSet;
const BoneSet& bonesDrivenBy(int controlNumber);

} // namespace quillon
