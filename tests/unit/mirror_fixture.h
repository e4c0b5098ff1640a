// mirror_fixture.h - what a figure looks like in a mirror, reckoned from world places alone: points
// and axes are reflected and left and right change their names. Nothing of the product's mirror
// rules, controls or files takes part.
#pragma once

#include "figure_fixture.h"

namespace quillon {

struct Mirror {
    DzVec3 pointCm_world;
    DzVec3 normal_world; // unit length
};

inline DzVec3 reflectedDirection(const DzVec3& v, const Mirror& mirror)
{
    return v - mirror.normal_world * (2 * v.dot(mirror.normal_world));
}

// The bone of the other side; the bone itself where there is none.
inline const DzBone* otherSide(const DzNode* figure, const DzBone* bone)
{
    const QString name = bone->getName();
    const bool left = name.startsWith(QLatin1Char('l')), right = name.startsWith(QLatin1Char('r'));
    const DzBone* other
        = left || right ? findBone(QLatin1Char(left ? 'r' : 'l') + name.mid(1), figure) : nullptr;
    return other ? other : bone;
}

// How far an axis of the bone is from the reflected one of its partner. The partner's own X axis
// points the other way: that is what makes a left hand of a right one.
inline double axisError(const DzQuat& before_world, const DzQuat& after_world, const Mirror& mirror)
{
    double worst = 0;
    for (const DzVec3& axis : {DzVec3(-1, 0, 0), DzVec3(0, 1, 0), DzVec3(0, 0, 1)}) {
        const DzVec3 own(std::fabs(axis.m_x), axis.m_y, axis.m_z);
        const DzVec3 expected = reflectedDirection(before_world.multVec(axis), mirror);
        worst = std::max(worst, distance(after_world.multVec(own), expected));
    }
    return worst;
}

// Empty when every bone stands and points as its partner did in the mirror. Seven digits a value in
// the file, over a chain of up to 14 bones and 2 m.
inline QString firstUnlikeReflection(
    const DzNode* figure, const Mirror& mirror, const std::vector<WorldPlace>& before)
{
    static const double kToleranceCm = 2e-3, kToleranceAxis = 2e-5;
    for (const FigureBone& each : bonesOf(figure)) {
        const WorldPlace& was = before[size_t(boneIndex(otherSide(figure, each.bone)->getName()))];
        const DzVec3 expectedCm = mirror.pointCm_world
            + reflectedDirection(was.posCm_world - mirror.pointCm_world, mirror);
        const double apartCm = distance(each.bone->getWSPos(), expectedCm);
        const double turned = axisError(was.rot_world, each.bone->getWSRot(), mirror);
        if (!(apartCm <= kToleranceCm && turned <= kToleranceAxis))
            return QString("%1 is %2 cm off, its axes %3")
                .arg(each.bone->getName())
                .arg(apartCm)
                .arg(turned);
    }
    return QString();
}

// Jaw and lower teeth have names that begin like those of a left side, two sounds of Genesis 8 end
// like one, and of Genesis 8.1 only the newer controls of the face change sides: what these have
// they keep when all is mirrored. So they are given nothing that a mirror would change.
inline void levelOneSidedNames(const DzNode* figure)
{
    for (const char* name : {"lowerJaw", "lowerTeeth", "lowerFaceRig"}) {
        const DzBone* bone = findBone(QLatin1String(name), figure);
        if (!bone)
            continue;
        bone->getYRotControl()->setRawValue(0);
        bone->getZRotControl()->setRawValue(0);
        bone->getXPosControl()->setRawValue(0);
    }
    for (const char* name : {"eCTRLvL", "eCTRLvER", "eCTRLEyesClosedL", "eCTRLEyesClosedR"}) {
        const bool changesSides = QByteArray(name).contains("Eyes") && !isGenesis81();
        DzFloatProperty* control = findControl(QLatin1String(name), figure);
        if (control && !changesSides)
            control->setValue(0);
    }
}

} // namespace quillon
