#include "finder/pose_signature.h"

#include "figure/figure_kind.h"

#include "dzbone.h"
#include "dzskeleton.h"

namespace quillon {

static const double kRadPerDeg = 0.017453292519943295;

static_assert(kSignatureRows == kSignatureSlots, "one row per slot");

static const DzBone* boneOf(const DzSkeleton* figure, const QString& name)
{
    return figure ? figure->findBone(name) : nullptr;
}

DzQuat boneLocalRotation(const DzSkeleton* figure, const QString& boneName, DzTime time)
{
    const DzBone* bone = boneOf(figure, boneName);
    return bone ? bone->getLocalRot(time) : DzQuat();
}

DzQuat boneWorldRotation(
    const DzSkeleton* figure, const QString& boneName, DzTime time, double yawDeg)
{
    const DzBone* bone = boneOf(figure, boneName);
    if (!bone)
        return DzQuat();
    return bone->getWSRot(time) * DzQuat(DzVec3(0, 1, 0), yawDeg * kRadPerDeg);
}

DzVec3 boneWorldPosition(const DzSkeleton* figure, const QString& boneName, DzTime time)
{
    const DzBone* bone = boneOf(figure, boneName);
    return bone ? bone->getWSPos(time) : DzVec3();
}

DzMatrix3 boneWorldScale(const DzSkeleton* figure, const QString& boneName, DzTime time)
{
    const DzBone* bone = boneOf(figure, boneName);
    return bone ? bone->getWSScale(time) : DzMatrix3(true);
}

DzQuat slotRotation(const DzSkeleton* figure, SignatureSlot slot, DzTime time)
{
    const char* const* bones = modelOf(figure).signatureBones[slot].bones;
    DzQuat product = boneLocalRotation(figure, QLatin1String(bones[0]), time);
    for (int i = 1; i < kSignatureFactors && bones[i]; ++i)
        product = product * boneLocalRotation(figure, QLatin1String(bones[i]), time);
    return slot == HipSlot ? product * boneWorldRotation(figure, QLatin1String(kHipName), time)
                           : product;
}

void takeSignature(int entry, DzSkeleton* figure, DzTime time)
{
    PoseIndexEntry* e = entryToChange(entry);
    if (!e || !boneOf(figure, QLatin1String(kHipName)))
        return;
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        e->signature[slot] = slotRotation(figure, SignatureSlot(slot), time);
    e->hasSignature = true;
}

} // namespace quillon
