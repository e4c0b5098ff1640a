// browse_tables.h - what the poses are held against while a category is browsed, and how well one
// fits: the turns of the hip, the references of the other parts, and which of them count.
#pragma once

#include "finder/pose_similarity.h"

#include "dztime.h"

class DzSkeleton;

namespace quillon {

const int kYawCount = 360;

// Which slots take part in the score.
struct SimilarityFilters {
    unsigned slotBits = 0; // bits by SignatureSlot
    bool on(int slot) const
    {
        return slotBits >> slot & 1u;
    }
};

struct BrowseTables {
    DzQuat yaw[kYawCount]; // the category's hip orientation, turned by whole degrees
    Probe yawProbes[kYawCount];
    DzQuat references[kSignatureSlots]; // that of the hip is not used
    Probe referenceProbes[kSignatureSlots];
    SimilarityFilters filters;
};

// From the category's row; where the row has none, from the figure.
void makeYawTable(BrowseTables*, int type, const DzSkeleton* figure, DzTime time);
void setPartReferences(BrowseTables*, int type, const DzSkeleton* figure, DzTime time);

// From the category's row, or the user's settings. All off for kNotBrowsing.
void setSimilarityFilters(BrowseTables*, int type);

// Above 0 exactly when no slot that takes part is rejected; kRejected without a signature.
float browseScore(const BrowseTables&, int entry);

// The best score of the hip against the yaw table.
float bestYawSimilarity(const BrowseTables&, const DzQuat& hip);

} // namespace quillon
