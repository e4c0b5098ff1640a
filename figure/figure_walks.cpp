#include "figure/figure_walks.h"

#include "figure/body_parts.h"
#include "figure/figure_lookup.h"

#include "dzbone.h"
#include "dzerclink.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <algorithm>

namespace quillon {

static bool inScope(bool ofFace, FigureScope scope)
{
    return scope == FigureScope::All || ofFace == (scope == FigureScope::Face);
}

std::vector<FigureBone> bonesOf(const DzNode* figure, FigureScope scope)
{
    std::vector<FigureBone> bones;
    const DzSkeleton* skeleton = figure ? figure->getSkeleton() : nullptr;
    if (!skeleton)
        return bones;
    const FigureModel& model = modelOf(figure);
    bones.reserve(kBoneCount);
    for (int number = 0; number < model.bones.count; ++number) {
        const QString& name = boneName(number, model);
        DzBone* bone = inScope(isFaceBone(name, model), scope) ? skeleton->findBone(name) : nullptr;
        if (bone)
            bones.push_back(FigureBone {bone, number});
    }
    return bones;
}

typedef DzFloatProperty* (*ControlLookup)(const QString& name, const DzNode* node);

static std::vector<FigureControl> collectControls(
    const DzNode* figure, FigureScope scope, ControlLookup lookup)
{
    const FigureModel& model = modelOf(figure);
    std::vector<FigureControl> controls;
    controls.reserve(kControlCountMax);
    for (int number = 0; number < controlCount(model); ++number) {
        const QString& name = controlName(number, model);
        DzFloatProperty* property
            = inScope(isExpressionControl(name, model), scope) ? lookup(name, figure) : nullptr;
        if (property)
            controls.push_back(FigureControl {property, number});
    }
    return controls;
}

std::vector<FigureControl> controlsOf(const DzNode* figure, FigureScope scope)
{
    return collectControls(figure, scope, findControl);
}

std::vector<FigureControl> ownControlsOf(const DzNode* figure, FigureScope scope)
{
    return collectControls(figure, scope, findOwnControl);
}

PoseChannels poseChannelsOf(const DzNode* bone)
{
    return PoseChannels {{bone->getXRotControl(), bone->getYRotControl(), bone->getZRotControl(),
        bone->getXPosControl(), bone->getYPosControl(), bone->getZPosControl()}};
}

DzFloatProperty* driverAt(const DzFloatProperty* property, int controller)
{
    const DzERCLink* link = qobject_cast<DzERCLink*>(property->getController(controller));
    return link ? qobject_cast<DzFloatProperty*>(link->getProperty()) : nullptr;
}

static void appendDriversFirst(DzFloatProperty* property, const FollowDriver& follow,
    std::vector<DzFloatProperty*>* entered, std::vector<DzFloatProperty*>* out)
{
    entered->push_back(property);
    for (int i = 0; i < property->getNumControllers(); ++i) {
        DzFloatProperty* driver = driverAt(property, i);
        if (driver && follow(driver)
            && std::find(entered->begin(), entered->end(), driver) == entered->end())
            appendDriversFirst(driver, follow, entered, out);
    }
    out->push_back(property);
}

std::vector<DzFloatProperty*> driversFirst(DzFloatProperty* property, const FollowDriver& follow)
{
    std::vector<DzFloatProperty*> entered;
    std::vector<DzFloatProperty*> out;
    appendDriversFirst(property, follow, &entered, &out);
    return out;
}

} // namespace quillon
