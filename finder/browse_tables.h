// browse_tables.h - what the poses are held against while a category is browsed, and how well one
// fits: the turns of the hip, the references of the other parts, and which of them count. What was
// found out about an entry is remembered beside its stamp (pose_index.h).
#pragma once

#include "finder/pose_similarity.h"
#include "ground/host_types.h"

#include <vector>

class DzSkeleton;

namespace quillon {

// Which slots take part in the score.
struct SimilarityFilters {
    unsigned slotBits = 0; // bits by SignatureSlot
    bool on(int slot) const
    {
        return slotBits >> slot & 1u;
    }
};

// What has been found out about an entry, as bits by SignatureSlot.
struct EntryFacts {
    quint32 stamp = 0; // of the entry then
    quint16 imaged = 0; // the images are known
    quint16 nearby = 0, away = 0; // the verdict is; both off: not yet
};

struct BrowseTables {
    DzQuat yaw[kYawCount]; // the category's hip orientation, turned by whole degrees
    Probe yawProbes[kYawCount];
    YawImages yawImages; // the same
    DzQuat references[kSignatureSlots]; // that of the hip is not used
    Probe referenceProbes[kSignatureSlots];
    Images referenceImages[kSignatureSlots]; // the same
    SimilarityFilters filters;

    std::vector<EntryFacts> facts; // by entry; verdicts are of these yaws and references
    std::vector<Images> images[kSignatureSlots]; // likewise; empty until the slot counts
};

// From the category's row; where the row has none, from the figure.
void makeYawTable(BrowseTables*, int type, const DzSkeleton* figure, DzTime time);
void setPartReferences(BrowseTables*, int type, const DzSkeleton* figure, DzTime time);

// From the category's row, or the user's settings. All off for kNotBrowsing.
void setSimilarityFilters(BrowseTables*, int type);

// Above 0 exactly when no slot that takes part is rejected; kRejected without a signature.
float browseScore(const BrowseTables&, int entry);

// Whether the score is above 0. Remembered by slot until yaws, references or the entry change.
bool isMatch(BrowseTables*, int entry);
void forgetFacts(BrowseTables*, int removed); // those of later entries move down with them

// The best score of the hip against the yaw table.
float bestYawSimilarity(const BrowseTables&, const DzQuat& hip);

} // namespace quillon
