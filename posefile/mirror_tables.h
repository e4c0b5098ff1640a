// mirror_tables.h - the controls that a mirrored pose exchanges or negates.
// A url is tested by whether it contains one of the names, so the paired test has to come first:
// "facs_ctrl_EyeLookSide-SideRight" contains the name of a negated control.
#pragma once

#include "figure/figure_kind.h"

#include <QByteArray>

#include <vector>

namespace quillon {

// Names that have a partner of the other side, of the model: 14 of the body and, with
// the face, those of its 62 (Genesis 8: "eCTRL...L", "...R") or 68 (Genesis 8.1: "facs_...Left...",
// "...Right..."), between the body's 12 arm and leg controls and its 2 biceps controls.
// The controls named "pCTRLl..." and "pCTRLr..." are none of them: their prefix is exchanged. Nor
// are the "eCTRLEyesClosedL" and "...R" of Genesis 8.1, which a mirrored 8.1 pose leaves alone.
const std::vector<QByteArray>& pairedControls(
    bool includeFace, const FigureModel& model = activeModel());

// Names of side-to-side and twist controls, whose value changes its sign.
const std::vector<QByteArray>& negatedControls(
    bool includeFace, const FigureModel& model = activeModel());

bool containsAnyOf(const QByteArray& text, const std::vector<QByteArray>& names);

} // namespace quillon
