#include "fuzz/fuzz_world.h"

#include <cmath>

namespace fuzz {

static std::unique_ptr<World> g_world;

static DzFigure* addedFigure(const char* name)
{
    QString why;
    DzFigure* figure = quillon::loadFigure(QLatin1String(name), &why);
    if (!figure)
        qFatal("%s", qPrintable(why));
    dzScene->addNode(figure);
    return figure;
}

World::World()
    : figure81(addedFigure("Genesis8_1Female"))
{
    rig.undoStack.clearAll();
}

DzFigure* World::choose(bool generation81)
{
    DzFigure* chosen = generation81 ? figure81 : figure;
    quillon::isSupportedFigure(chosen);
    return chosen;
}

World& world()
{
    if (!g_world)
        g_world.reset(new World);
    return *g_world;
}

void endWorld()
{
    g_world.reset();
}

QString fileOf(const QByteArray& bytes)
{
    return world().fileWith("input", bytes);
}

bool sameNumber(float a, float b)
{
    return quillon::sameBits(a, b) || (a != 0 && b != 0 && std::nextafter(a, b) == b);
}

} // namespace fuzz
