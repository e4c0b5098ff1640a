// posed_figure.h - a stand-in figure in a scene, and one random pose (fixed seed) to set again
// before each run of a tool.
#pragma once

#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "host/figures/figure_loader.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace quillon {

class PosedFigure {
public:
    explicit PosedFigure(const char* name)
    {
        QString why;
        figure = loadFigure(QLatin1String(name), &why);
        if (!figure)
            qFatal("%s", qPrintable(why));
        scene.addNode(figure);
        isSupportedFigure(figure);
        buildFigureTables();
        for (const FigureBone& each : bonesOf(figure)) {
            for (DzFloatProperty* channel : poseChannelsOf(each.bone).channel)
                add(channel, channel->getName().endsWith(QLatin1String("Rotate")) ? 1.f : 0.f);
        }
        for (const FigureControl& each : controlsOf(figure))
            add(each.property, 0.5f);
        setPose();
    }

    void setPose()
    {
        for (const std::pair<DzFloatProperty*, float>& each : m_pose)
            each.first->setRawValue(each.second);
    }

    // Of all values of the pose, so that doing less work cannot pass for speed.
    double checksum() const
    {
        double sum = 0;
        for (const std::pair<DzFloatProperty*, float>& each : m_pose)
            sum += std::fabs(each.first->getRawValue());
        return sum;
    }

    DzUndoStack undoStack;
    DzScene scene;
    DzFigure* figure;

private:
    // A value within the limits, scaled by share; 0 leaves the channel at rest.
    void add(DzFloatProperty* property, float share)
    {
        const float low = property->getMin(), span = property->getMax() - low;
        const float random = float(m_random() >> 8) / float(1 << 24);
        m_pose.push_back(std::make_pair(property, share > 0 ? (low + random * span) * share : 0.f));
    }

    std::vector<std::pair<DzFloatProperty*, float>> m_pose;
    std::mt19937 m_random {1}; // the same numbers on every machine
};

static const char* const kBenchFigures[] = {"Genesis8Female", "Genesis8_1Female"};

} // namespace quillon
