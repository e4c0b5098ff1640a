// figure_fixture.h - a stand-in figure in a scene of its own, random poses, damage, and states of a
// figure to compare.
#pragma once

#include "scene_fixture.h"

#include "figure/body_parts.h"
#include "figure/figure_calls.h"
#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "figure/pose_limits.h"
#include "host/figures/figure_loader.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dzobject.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

namespace quillon {

static const char* const kTestFigures[]
    = {"Genesis8Female", "Genesis8Male", "Genesis8_1Female", "Genesis8_1Male"};

// Rows of a test that runs on every figure; QFETCH(QString, figure).
inline void addFigureRows()
{
    QTest::addColumn<QString>("figure");
    for (const char* name : kTestFigures)
        QTest::newRow(name) << QString(QLatin1String(name));
}

// Scene, figure and the plug-in's process-wide state as at start.
struct FigureFixture : SceneFixture {
    explicit FigureFixture(const QString& name = QLatin1String("Genesis8Female"))
    {
        QString why;
        figure = loadFigure(name, &why);
        if (!figure)
            qFatal("%s", qPrintable(why));
        scene.addNode(figure);
        isSupportedFigure(figure);
        forgetLimits();
        undoStack.clearAll();
    }

    DzBone* bone(const char* name) const
    {
        return figure->findBone(QLatin1String(name));
    }
    DzFloatProperty* control(const char* name) const
    {
        return findControl(QLatin1String(name), figure);
    }
    void select(const char* boneName)
    {
        bone(boneName)->select(true);
    }

    DzFigure* figure;
};

// ---- everything that makes a figure's state

typedef std::vector<std::pair<DzTime, float>> Keys;

struct ChannelState {
    const DzFloatProperty* property;
    QString path; // "lShin/XRotate"
    Keys keys;
    float value, def, min, max;
    bool locked, clamped, overriding;
};
typedef std::vector<ChannelState> FigureState;

typedef std::vector<const DzFloatProperty*> Channels;

inline void addChannels(const DzElement* element, Channels* out)
{
    for (int i = 0; i < element->getNumProperties(); ++i) {
        if (const auto* each = qobject_cast<DzFloatProperty*>(element->getProperty(i)))
            out->push_back(each);
    }
}

// Of the figure node, its morphs and all nodes below.
inline Channels everyChannel(const DzNode* figure)
{
    Channels all;
    addChannels(figure, &all);
    if (const DzObject* object = figure->getObject()) {
        for (int i = 0; i < object->getNumModifiers(); ++i)
            addChannels(object->getModifier(i), &all);
    }
    DzNodeList below;
    figure->getNodeChildren(below, true);
    for (const DzNode* node : std::as_const(below))
        addChannels(node, &all);
    return all;
}

// Those that a pose is made of: of the bones, in their order, then of the controls.
inline std::vector<DzFloatProperty*> poseProperties(const DzNode* figure)
{
    std::vector<DzFloatProperty*> all;
    for (const FigureBone& each : bonesOf(figure)) {
        const PoseChannels channels = poseChannelsOf(each.bone);
        all.insert(all.end(), std::begin(channels.channel), std::end(channels.channel));
    }
    for (const FigureControl& each : controlsOf(figure))
        all.push_back(each.property);
    return all;
}

inline QString pathOf(const DzFloatProperty* channel)
{
    const auto* owner = qobject_cast<const DzBase*>(channel->getOwner());
    return (owner ? owner->getName() : QString()) + QLatin1Char('/') + channel->getName();
}

inline Keys keysOf(const DzFloatProperty* channel)
{
    Keys keys;
    for (int k = 0; k < channel->getNumKeys(); ++k)
        keys.push_back(std::make_pair(channel->getKeyTime(k), channel->getKeyValue(k)));
    return keys;
}

inline FigureState statesOf(const Channels& channels)
{
    FigureState states;
    for (const DzFloatProperty* p : channels)
        states.push_back(ChannelState {p, pathOf(p), keysOf(p), p->getValue(), p->getDefaultValue(),
            p->getMin(), p->getMax(), p->isLocked(), p->isClamped(), p->isOverridingControllers()});
    return states;
}

inline FigureState stateOf(const DzNode* figure)
{
    return statesOf(everyChannel(figure));
}

inline FigureState stateOfElement(const DzElement* element)
{
    Channels own;
    addChannels(element, &own);
    return statesOf(own);
}

inline bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

inline bool sameState(const ChannelState& a, const ChannelState& b)
{
    if (a.property != b.property || a.keys.size() != b.keys.size() || a.locked != b.locked
        || a.clamped != b.clamped || a.overriding != b.overriding)
        return false;
    for (size_t k = 0; k < a.keys.size(); ++k) {
        if (a.keys[k].first != b.keys[k].first || !sameBits(a.keys[k].second, b.keys[k].second))
            return false;
    }
    return sameBits(a.value, b.value) && sameBits(a.def, b.def) && sameBits(a.min, b.min)
        && sameBits(a.max, b.max);
}

// Empty when every key, value and flag is the same, bit for bit; else the first that is not.
inline QString firstDifference(const FigureState& before, const FigureState& after)
{
    if (before.size() != after.size())
        return QLatin1String("number of properties");
    for (size_t i = 0; i < before.size(); ++i) {
        const ChannelState &a = before[i], &b = after[i];
        if (!sameState(a, b))
            return QString("%1: %2 (%3 keys), was %4 (%5 keys)")
                .arg(a.path)
                .arg(double(b.value))
                .arg(b.keys.size())
                .arg(double(a.value))
                .arg(a.keys.size());
    }
    return QString();
}

// Empty when the same channels have keys at the same times and no value differs by more than the
// tolerance; else the first that does.
inline QString firstOtherKey(const FigureState& a, const FigureState& b, double tolerance)
{
    for (size_t i = 0; i < a.size(); ++i) {
        const Keys &keys = a[i].keys, &others = b[i].keys;
        const bool same = keys.size() == others.size()
            && std::equal(keys.begin(), keys.end(), others.begin(),
                [tolerance](const Keys::value_type& x, const Keys::value_type& y) {
                    return x.first == y.first && std::fabs(x.second - y.second) <= tolerance;
                });
        if (!same || !(std::fabs(a[i].value - b[i].value) <= tolerance))
            return QString("%1: %2 (%3 keys), was %4 (%5 keys)")
                .arg(a[i].path)
                .arg(double(b[i].value))
                .arg(others.size())
                .arg(double(a[i].value))
                .arg(keys.size());
    }
    return QString();
}

#define VERIFY_SAME_STATE(before, after)                                                           \
    do {                                                                                           \
        const QString difference = quillon::firstDifference(before, after);                        \
        QVERIFY2(difference.isEmpty(), qPrintable(difference));                                    \
    } while (false)

// Empty when the figure has changed since, by one undo step that leads there and back, bit for bit.
inline QString firstFlawOfStep(const FigureState& before, FigureFixture* f)
{
    const FigureState after = stateOf(f->figure);
    if (firstDifference(before, after).isEmpty())
        return QLatin1String("nothing has changed");
    if (f->undoStack.getNumUndoItems() != 1)
        return QString("%1 undo steps").arg(f->undoStack.getNumUndoItems());
    if (!f->undoStack.undo())
        return QLatin1String("no undo");
    const QString left = firstDifference(before, stateOf(f->figure));
    if (!left.isEmpty())
        return QLatin1String("after undo: ") + left;
    if (!f->undoStack.redo())
        return QLatin1String("no redo");
    const QString missing = firstDifference(after, stateOf(f->figure));
    return missing.isEmpty() ? missing : QLatin1String("after redo: ") + missing;
}

#define VERIFY_ONE_STEP_SINCE(before, fixture)                                                     \
    do {                                                                                           \
        const QString flaw = quillon::firstFlawOfStep(before, &(fixture));                         \
        QVERIFY2(flaw.isEmpty(), qPrintable(flaw));                                                \
    } while (false)

// A channel that "Bone Translations" moves although it is locked.
inline bool isFreedByBoneTranslations(const DzFloatProperty* channel)
{
    const auto* bone = qobject_cast<const DzBone*>(channel->getOwner());
    return bone && isTranslatableBone(bone->getName())
        && channel->getName().endsWith(QLatin1String("Translate"));
}

enum class LocksLifted { None, ByBoneTranslations };

// What is locked, and the raw values that the locks hold.
typedef std::vector<std::pair<const DzFloatProperty*, Keys>> HeldChannels;

inline HeldChannels heldAmong(const Channels& all)
{
    HeldChannels held;
    for (const DzFloatProperty* each : all) {
        if (each->isLocked())
            held.push_back(std::make_pair(each, keysOf(each)));
    }
    return held;
}

// Every lock is still there, and what it held kept its raw value, unless the tool lifts that lock.
inline QString lostLock(const HeldChannels& before, LocksLifted lifted = LocksLifted::None)
{
    for (const auto& held : before) {
        if (!held.first->isLocked())
            return pathOf(held.first) + QLatin1String(" is no longer locked");
        if (lifted == LocksLifted::ByBoneTranslations && isFreedByBoneTranslations(held.first))
            continue;
        if (keysOf(held.first) != held.second)
            return pathOf(held.first) + QLatin1String(" changed under its lock");
    }
    return QString();
}

// ---- world places

struct WorldPlace {
    DzQuat rot_world;
    DzVec3 posCm_world;
};

inline std::vector<WorldPlace> worldPlaces(const DzNode* figure)
{
    std::vector<WorldPlace> places(kBoneCount);
    for (const FigureBone& each : bonesOf(figure))
        places[each.number] = WorldPlace {each.bone->getWSRot(), each.bone->getWSPos()};
    return places;
}

// Empty when no bone turned or moved by more than the tolerances.
inline QString firstMoved(const DzNode* figure, const std::vector<WorldPlace>& before,
    double toleranceDeg, double toleranceCm)
{
    const std::vector<WorldPlace> now = worldPlaces(figure);
    for (const FigureBone& each : bonesOf(figure)) {
        const WorldPlace &a = before[each.number], &b = now[each.number];
        const double turnDeg = angleDeg(a.rot_world, b.rot_world);
        const double moveCm = distance(a.posCm_world, b.posCm_world);
        if (!(turnDeg <= toleranceDeg && moveCm <= toleranceCm))
            return QString("%1 turned %2 deg, moved %3 cm")
                .arg(each.bone->getName())
                .arg(turnDeg)
                .arg(moveCm);
    }
    return QString();
}

// ---- random poses and damage

// All rotations within their limits, small translations (the hip's wide), and a third of the
// controls at random in their ranges: sums of both may leave the limits.
inline void poseAtRandom(Random* random, const DzNode* figure)
{
    const DzUndoStackLock unrecorded; // a thousand steps otherwise
    for (const FigureBone& each : bonesOf(figure)) {
        const PoseChannels channels = poseChannelsOf(each.bone);
        const float reachCm = each.number == 0 ? 60.f : 0.5f;
        for (int i = 0; i < kPoseChannelCount; ++i) {
            DzFloatProperty* c = channels.channel[i];
            const bool turn = i < 3;
            c->setValue(float(turn ? random->between(c->getMin(), c->getMax())
                                   : random->between(-reachCm, reachCm)));
        }
    }
    for (const FigureControl& each : controlsOf(figure)) {
        if (random->below(3) == 0)
            each.property->setValue(
                float(random->between(each.property->getMin(), each.property->getMax())));
    }
}

inline void liftAllLimits(DzNode* figure)
{
    const DzUndoStackLock unrecorded;
    setBodyBoneLimits(figure, false, false);
    setBodyControlLimits(figure, false, false);
    setFaceLimits(figure, false, false);
}

// Y and Z Rotate limited as X Rotate is: the state that limits keep one flag a bone for. The eyes
// and lids are loaded with an unlimited Z Rotate.
inline void levelLimits(const DzNode* figure)
{
    for (const FigureBone& each : bonesOf(figure)) {
        const bool clamped = each.bone->getXRotControl()->isClamped();
        each.bone->getYRotControl()->setIsClamped(clamped);
        each.bone->getZRotControl()->setIsClamped(clamped);
    }
}

// Unlocks and unlimits the translation, then sets it.
inline void setFreeTranslation(DzNode* bone, const DzVec3& posCm)
{
    for (DzFloatProperty* channel :
        {bone->getXPosControl(), bone->getYPosControl(), bone->getZPosControl()}) {
        channel->lock(false);
        channel->setIsClamped(false);
    }
    bone->setLocalPos(posCm);
}

// Locks up to count pose channels and controls at random and gives those it locked.
inline std::vector<DzFloatProperty*> lockAtRandom(Random* random, const DzNode* figure, int count)
{
    const std::vector<DzFloatProperty*> all = poseProperties(figure);
    std::vector<DzFloatProperty*> locked;
    for (int i = 0; i < count; ++i) {
        DzFloatProperty* property = all[random->below(int(all.size()))];
        if (!property->isLocked())
            locked.push_back(property);
        property->lock(true);
    }
    return locked;
}

inline void unlock(const std::vector<DzFloatProperty*>& properties)
{
    for (DzFloatProperty* property : properties)
        property->lock(false);
}

// Removes count bones and controls at random, hip and head among them at times.
inline void mutilate(Random* random, DzFigure* figure, int count)
{
    for (int i = 0; i < count; ++i) {
        if (random->below(2) == 0) {
            DzBone* bone = findBone(random->below(kBoneCount), figure);
            if (bone)
                figure->removeBone(bone);
            continue;
        }
        const QString name = controlName(random->below(controlCount()));
        if (DzProperty* property = figure->findProperty(name))
            figure->removeProperty(property);
        else if (DzModifier* morph = figure->getObject()->findModifier(name))
            figure->getObject()->removeModifier(morph);
    }
}

} // namespace quillon
