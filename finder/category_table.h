// category_table.h - the nine categories of poses: all there is to say about one stands in its row.
// Owns: nothing but the const table. A new category is a row here and its button in the pane.
#pragma once

#include "finder/pose_index.h"

namespace quillon {

enum PoseType {
    AllPoses,
    Sitting,
    Standing,
    LyingBellyUp,
    LyingBellyDown,
    LyingLeftSide,
    LyingRightSide,
    UpsideDown,
    ReferencePose
};
const int kCategoryCount = 9;
const int kNotBrowsing = -1; // in place of a category

// The orientations of a pose that stands for a category, by slot; x, y, z, w, made unit length when
// built. That of the hip is not used.
typedef double PartReferences[kSignatureSlots][4];

struct CategoryRow {
    PoseType type;
    double base[4]; // orientation of the hip; x, y, z, w, made unit length when built
    const PartReferences* parts; // null: base and parts are those of the figure itself
    unsigned filters; // bits by SignatureSlot: what takes part in the score
    bool filtersByUser; // those of the settings instead
};

const CategoryRow& categoryRow(int type); // 0..kCategoryCount-1
bool isCategory(int type);

// The hip orientation that stands for the type. Not of ReferencePose, which has none of its own.
DzQuat poseTypeBase(int type);

} // namespace quillon
