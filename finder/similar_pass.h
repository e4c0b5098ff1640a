// similar_pass.h - which poses of a scan are similar to an earlier one that was kept.
//
// Two poses are similar if they are for the same figure and in no slot the images of the axes Y
// and Z lie too far apart. "Too far" is what a score in single precision says; a NaN never does. A
// pose that is similar to a kept one is not kept itself.
// Owns: what was kept so far.
#pragma once

#include "finder/box_tree.h"

#include <vector>

namespace quillon {

const float kDuplicateTolerance = 0.5f;
const float kLeastScore = 0.001f; // of an axis; what scores no more is too far apart

const int kPassSlots = 10; // in the order of a signature
const int kNoRepeat = -1;

const int kImageNumbers = 6; // x, y, z of the image of Y, then of that of Z
struct SimilarRow {
    bool takesPart; // neither dropped before nor of the custom library
    unsigned figureCode;
    float images[kPassSlots * kImageNumbers];
};

bool areSimilarRows(const SimilarRow& a, const SimilarRow& b);

class SimilarPass {
public:
    explicit SimilarPass(std::vector<SimilarRow> rows);

    // To be asked once of each entry, from 0 on. The first of the entries kept so far that this one
    // is similar to; kNoRepeat if there is none, and for an entry that does not take part.
    int firstRepeated(int entry);

private:
    struct Figure { // entries of one figure code
        unsigned code;
        BoxTree tree;
        std::vector<int> kept;
        std::vector<int> keptOdd; // those of them that are not in the tree
    };
    void addFigure(std::vector<int> members);
    Figure* figureOf(int entry);
    int firstSimilar(const std::vector<int>& earlier, int entry) const;
    int search(const Figure& figure, int entry) const;
    void keep(Figure* figure, int entry);

    std::vector<SimilarRow> m_rows;
    PointRows m_points;
    std::vector<int> m_leafOf; // by entry; -1: not in the tree, as something is not finite
    std::vector<Figure> m_figures; // codes rise
};

} // namespace quillon
