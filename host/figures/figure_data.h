// figure_data.h - the stand-in figures as rows, read from the JSON files of this folder.
// Units: centimetres, degrees; points in the space of the figure, its scale applied. Rotations in
// the host's quaternion convention (dzquat.h): the files hold the usual one and are converted here.
// Owns: one cached record per figure, kept until the folder changes. GUI thread only.
// Errors: null and *why as "file: text".
#pragma once

#include "dzquat.h"
#include "dzrotationorder.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace quillon {

// Limits and flags of one channel; label is empty where the channel keeps its usual one.
struct ChannelRow {
    QString label;
    float min, max;
    bool locked, clamped;
};

struct BoneRow {
    QString name, label;
    int parent; // row of the parent, always an earlier one; -1: the figure
    DzRotationOrder order;
    DzVec3 center, end;
    DzQuat orientation;
    ChannelRow rotation[3], translation[3];
};

// Adds factor times the control's value to a channel of a bone.
struct LinkRow {
    int bone; // row of BoneRow
    int channel; // 0..2 X/Y/ZTranslate in centimetres, 3..5 X/Y/ZRotate in degrees
    float factor;
};

struct ControlRow {
    QString name, label;
    QString path; // "Pose Controls/Arms/Hands"
    float min, max;
    std::vector<LinkRow> links; // empty: a pure shape
};

// How the body is drawn: factors on the thickness of its parts (1: as in the shape table; bust or
// bun 0: none), and colours as "#rrggbb".
struct FigureBuild {
    float shoulders, chest, waist, hips, limbs, bust, jaw, bun;
    float suitTop, suitLegs; // height of the suit's upper and lower end, cm before the scale
    QString skin, suit, hair, lips, iris;
};

struct FigureData {
    QString name, label, generation;
    float scale; // of all points against the files
    FigureBuild build;
    std::vector<BoneRow> bones;
    std::vector<ControlRow> controls;
};

QStringList figureNames(); // in the order of the figure list; not all need be present
const FigureData* figureData(const QString& name, QString* why);

// Empty: ../share/quillon/figures beside the program, or the source folder when that is absent.
void setFigureFolder(const QString& folder);
QString figureFolder();

} // namespace quillon
