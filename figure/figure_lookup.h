// figure_lookup.h - from names and numbers to bones, controls and their links.
// Numbers are those of a model's lists (figure_model.h); without a model they are of the last
// supported figure's ("active"). Null and -1 mean absent, which every tool skips without a message.
// Nothing here is read from a figure but the bone or property itself.
#pragma once

#include "figure/figure_kind.h"
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
// Bone number, -1 when absent; exact.
int boneIndex(const QString& name, const FigureModel& model = activeModel());
const QString& boneName(int boneNumber, const FigureModel& model = activeModel()); // 0..169
DzBone* findBone(const QString& name, const DzNode* node); // on the node's skeleton
DzBone* findBone(int boneNumber, const DzNode* node); // of the node's model

// ---- controls
int controlCount(const FigureModel& model = activeModel()); // 250 or 248
// Control number, -1 when absent; exact.
int controlIndex(const QString& name, const FigureModel& model = activeModel());
const QString& controlName(int controlNumber, const FigureModel& model = activeModel());
bool isBodyControl(const QString& name, const FigureModel& model = activeModel());

// The same by name ids (name_index.h): the number in the model's list, or -1.
int boneNumberOf(int nameId, const FigureModel& model);
int controlNumberOf(int nameId, const FigureModel& model);

// A property of the node's skeleton, else the value channel of the morph of that name on the
// skeleton's object. A morph's channel is called "Value": keep the name that was asked for.
DzFloatProperty* findControl(const QString& name, const DzNode* node);
// A property of the node itself, without the morphs.
DzFloatProperty* findOwnControl(const QString& name, const DzNode* node);
// The name by which the tables know a control: its own, or that of the morph it belongs to.
QString controlNameOf(const DzProperty* property);

// ---- links
const char* boneControlRow(
    int boneNumber, const FigureModel& model = activeModel()); // ".name.name."
// Whether the row of the bone names the control; false for a number outside 0..169.
bool controlDrivesBone(
    const QString& controlName, int boneNumber, const FigureModel& model = activeModel());
// All bones whose row names the control, by bone number; for a control of the model.
typedef std::bitset<kBoneCount> BoneSet;
const BoneSet& bonesDrivenBy(int controlNumber, const FigureModel& model = activeModel());

} // namespace quillon
