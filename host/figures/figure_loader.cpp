#include "host/figures/figure_loader.h"

#include "dzbone.h"
#include "dzerclink.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzundostack.h"

namespace quillon {

// Steps of a slider or nudge, per unit of the channel.
static const float kControlStep = 0.01f;
static const float kRotateStepDeg = 0.5f;
static const float kTranslateStepCm = 0.1f;

static const float kFleshCm = 8.f; // the body reaches so far beyond its joints, soles excepted

static DzFloatProperty* channelOf(const DzNode* node, int channel) // as LinkRow counts them
{
    switch (channel) {
    case 0:
        return node->getXPosControl();
    case 1:
        return node->getYPosControl();
    case 2:
        return node->getZPosControl();
    case 3:
        return node->getXRotControl();
    case 4:
        return node->getYRotControl();
    default:
        return node->getZRotControl();
    }
}

static void setUpChannel(const ChannelRow& row, float step, DzFloatProperty* channel)
{
    if (!row.label.isEmpty())
        channel->setLabel(row.label);
    channel->setMinMax(row.min, row.max);
    channel->setSensitivity(step);
    channel->setIsClamped(row.clamped);
    channel->lock(row.locked);
}

static DzBone* makeBone(const BoneRow& row)
{
    DzBone* bone = new DzBone(row.name);
    bone->setLabel(row.label);
    bone->setRotationOrder(row.order);
    bone->setOrigin(row.center, true);
    bone->setOrientation(row.orientation, true);
    bone->setEndPoint(row.end);
    for (int axis = 0; axis < 3; ++axis) {
        setUpChannel(row.translation[axis], kTranslateStepCm, channelOf(bone, axis));
        setUpChannel(row.rotation[axis], kRotateStepDeg, channelOf(bone, 3 + axis));
    }
    return bone;
}

static std::vector<DzBone*> addBones(const FigureData& data, DzFigure* figure)
{
    std::vector<DzBone*> bones;
    bones.reserve(data.bones.size());
    for (const BoneRow& row : data.bones) {
        DzBone* bone = makeBone(row);
        DzNode* parent = row.parent < 0 ? static_cast<DzNode*>(figure) : bones[row.parent];
        parent->addNodeChild(bone);
        bone->setInheritScale(row.parent < 0); // only the one below the figure takes its scale
        bones.push_back(bone);
    }
    return bones;
}

static void setUpControl(const ControlRow& row, DzFloatProperty* control)
{
    control->setLabel(row.label);
    control->setPath(row.path);
    control->setMinMax(row.min, row.max);
    control->setSensitivity(kControlStep);
    control->setIsClamped(true);
}

static void addControl(const ControlRow& row, const std::vector<DzBone*>& bones, DzFigure* figure)
{
    if (row.links.empty()) {
        DzMorph* morph = new DzMorph(row.name);
        morph->setLabel(row.label);
        setUpControl(row, morph->getValueChannel());
        figure->getObject()->addModifier(morph);
        return;
    }
    DzFloatProperty* control = new DzFloatProperty(row.name);
    setUpControl(row, control);
    figure->addProperty(control);
    for (const LinkRow& link : row.links)
        channelOf(bones[link.bone], link.channel)
            ->insertController(new DzERCLink(control, DzERCLink::ERCDeltaAdd0, link.factor));
}

static DzBox3 bodyBox(const FigureData& data)
{
    const DzVec3 flesh = DzVec3(kFleshCm, kFleshCm, kFleshCm) * data.scale;
    DzBox3 joints;
    for (const BoneRow& bone : data.bones) {
        joints.include(bone.center);
        joints.include(bone.end);
    }
    DzVec3 low = joints.getMin() - flesh;
    low.m_y = 0;
    DzVec3 high = joints.getMax() + flesh;
    high.m_y = joints.getMax().m_y + 0.3f * flesh.m_y; // the crown is itself an end point
    return DzBox3(low, high);
}

static QString uniqueLabel(const QString& label)
{
    QStringList taken;
    for (int i = 0; dzScene && i < dzScene->getNumNodes(); ++i)
        if (dzScene->getNode(i)->isRootNode())
            taken << dzScene->getNode(i)->getLabel();
    QString unique = label;
    for (int n = 2; taken.contains(unique); ++n)
        unique = QString("%1 (%2)").arg(label).arg(n);
    return unique;
}

DzFigure* loadFigure(const QString& name, QString* why)
{
    const FigureData* data = figureData(name, why);
    if (!data)
        return nullptr;
    DzUndoStackLock unrecorded;
    DzFigure* figure = new DzFigure(data->name);
    figure->setLabel(uniqueLabel(data->label));
    DzObject* body = new DzObject(data->name);
    body->setGeometryBox(bodyBox(*data));
    figure->setObject(body);
    const std::vector<DzBone*> bones = addBones(*data, figure);
    for (const ControlRow& row : data->controls)
        addControl(row, bones, figure);
    return figure;
}

} // namespace quillon
