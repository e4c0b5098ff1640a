// fuzz_world.h - what targets work on: an application whose folders are the process's own, below
// the system's temporary folder, two figures and the plug-in's stores. Made when it is first asked
// for, and the same for all inputs: a target puts in order what it needs.
#pragma once

#include "unit/finder_fixture.h"

#include <QString>

namespace fuzz {

struct World : quillon::FinderFixture {
    World();
    DzFigure* figure81; // of the other generation

    // The figure of the generation, now the one that functions without a figure mean.
    DzFigure* choose(bool generation81);
};
World& world();
void endWorld(); // while there is an application; removes the folder

// A file of these bytes; the next call may give the same file other ones.
QString fileOf(const QByteArray& bytes);

// Whether both are written alike: the float itself, or its neighbour, as a number that lies between
// two floats may be rounded once or, through a double, twice.
bool sameNumber(float a, float b);

} // namespace fuzz
