#include "reference/pose_rewriter_reference.h"

#include "figure/bone_control_links.h"
#include "figure/bone_table.h"
#include "figure/figure_kind.h"

#include "dzbone.h"
#include "dzskeleton.h"

#include <utility>

namespace quillon {
namespace reference {

static bool drives(const QString& control, int boneNumber)
{
    const char* row = (isGenesis81() ? kBoneControlLinksG81 : kBoneControlLinksG8)[boneNumber];
    const QChar dot = QLatin1Char('.');
    return QString(QLatin1String(row)).contains(dot + control + dot);
}

static int tableIndex(const QString& boneName)
{
    for (int i = 0; i < kBoneCount; ++i) {
        if (boneName == QLatin1String(kBoneTable[i]))
            return i;
    }
    return -1;
}

int selectionIndexFor(const QString& name, DzNode* figure, bool withChildren, bool symmetrize,
    int mode, bool* noTouch)
{
    DzSkeleton* skeleton = figure->getSkeleton();
    for (int i = 0; i < kBoneCount; ++i) {
        const QString boneName = QLatin1String(kBoneTable[i]);
        const DzBone* bone = skeleton->findBone(boneName);
        if (!bone)
            continue;
        *noTouch = false;
        const QChar side = boneName.at(0);
        const bool sided = side == QLatin1Char('l') || side == QLatin1Char('r');
        const QChar other = side == QLatin1Char('l') ? QLatin1Char('r') : QLatin1Char('l');
        const DzBone* partner = sided ? skeleton->findBone(other + boneName.mid(1)) : nullptr;
        const bool pairSelected = partner && partner->isSelected();
        if (symmetrize && pairSelected)
            *noTouch = true;
        if ((!bone->isSelected() && !pairSelected) || (symmetrize && !sided))
            continue;
        if (mode == 0 && boneName == name)
            return i;
        if (mode == 1 && drives(name, i))
            return 0;
        if (!withChildren)
            continue;
        DzNodeList below;
        bone->getNodeChildren(below, true);
        for (DzNode* node : std::as_const(below)) {
            if (!qobject_cast<DzBone*>(node) || node->getSkeleton() != skeleton)
                continue;
            const int j = tableIndex(node->getName());
            if (j <= 0)
                continue;
            if (mode == 0 && node->getName() == name)
                return j;
            if (mode == 1 && drives(name, j))
                return 0;
        }
    }
    return -1;
}

} // namespace reference
} // namespace quillon
