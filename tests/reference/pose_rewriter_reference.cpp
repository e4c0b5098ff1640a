#include "reference/pose_rewriter_reference.h"

#include "reference/pose_reader_reference.h"

#include "figure/body_parts.h"
#include "figure/bone_control_links.h"
#include "figure/bone_table.h"
#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "posefile/pose_rewriter.h"

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

// ---- the text

// A carriage return before a line feed goes with it. No empty line behind the last line feed.
static QList<QByteArray> linesOf(const QByteArray& text)
{
    QList<QByteArray> lines = text.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QByteArray& line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
    }
    return lines;
}

static bool takesPart(const QByteArray& url, const RewriteRules& rules, std::set<int>* touched)
{
    QString line; // zero bytes and all
    for (char c : url)
        line += QLatin1Char(c);
    const int code = reference::channelOf(line);
    const QString name = reference::nodeNameOf(line);
    if (code == 0 || (boneIndex(name) < 0 && !isBodyControl(name)))
        return false;
    if (rules.mirrorAll)
        return true;
    if (!rules.includeFace && (code == 7 ? isExpressionControl(name) : isFaceBone(name)))
        return false;
    bool noTouch = false;
    const int index = reference::selectionIndexFor(
        name, rules.figure, rules.withChildren, rules.symmetrize, code == 7 ? 1 : 0, &noTouch);
    if (index >= 0 && code != 7 && !noTouch)
        touched->insert(index);
    return index >= 0;
}

QByteArray rewritten(const QByteArray& text, const RewriteRules& rules, std::set<int>* touched)
{
    QList<QByteArray> lines = linesOf(text);
    int at = 0;
    while (at < lines.size() && !lines.at(at).contains("animations"))
        ++at;
    for (++at; at + 4 <= lines.size(); at += 4) {
        if (takesPart(lines.at(at + 1), rules, touched))
            mirrorEntry(&lines[at + 1], &lines[at + 2], rules.includeFace);
    }
    QByteArray out;
    for (const QByteArray& line : std::as_const(lines))
        out += line + '\n';
    return out;
}

} // namespace reference
} // namespace quillon
