#include "reference/finder_reference.h"

#include "finder/body_words.h"
#include "finder/browse_session.h"
#include "ground/plugin_settings.h"

#include <cmath>

namespace quillon {
namespace reference {

// ---- similarity

static float score(float distance, float tolerance)
{
    if (tolerance == 0)
        return 1;
    const float s = (distance - 0) / (tolerance - 0) * (0.0f - 1.0f) + 1;
    return s < 0 ? 0 : s < 1 ? s : 1; // a distance that is no number counts as none
}

static float probeDistance(const DzQuat& a, const DzQuat& b, const DzVec3& probe)
{
    return (a.multVec(probe) - b.multVec(probe)).length();
}

float partSimilarity(const DzQuat& a, const DzQuat& b, float tolerance)
{
    const float sY = score(probeDistance(a, b, DzVec3(0, 1, 0)), tolerance);
    const float sZ = score(probeDistance(a, b, DzVec3(0, 0, 1)), tolerance);
    if (tolerance <= 2.0f && (sY <= 0.001f || sZ <= 0.001f))
        return -1000000;
    return sY < sZ ? sY : sZ;
}

static bool componentsMirror(const DzQuat& p, const DzQuat& q)
{
    return std::fabs(float(p.m_y) - (-float(q.m_y))) < 0.1f
        && std::fabs(float(p.m_z) - (-float(q.m_z))) < 0.1f;
}

bool isMirrorOf(int entryA, int entryB)
{
    const DzQuat* a = poseEntry(entryA)->signature;
    const DzQuat* b = poseEntry(entryB)->signature;
    return componentsMirror(a[0], b[0]) // hip
        && componentsMirror(a[1], b[1]) // torso
        && componentsMirror(a[2], b[3]) && componentsMirror(a[3], b[2]) // shins
        && componentsMirror(a[4], b[5]) && componentsMirror(a[5], b[4]) // thighs
        && componentsMirror(a[6], b[7]) && componentsMirror(a[7], b[6]) // arms
        && componentsMirror(a[8], b[9]) && componentsMirror(a[9], b[8]); // forearms
}

bool isSimilarPose(int entryA, int entryB)
{
    const PoseIndexEntry &a = *poseEntry(entryA), &b = *poseEntry(entryB);
    if (a.figureCode != b.figureCode)
        return false;
    for (int slot = 0; slot < 10; ++slot) {
        if (partSimilarity(a.signature[slot], b.signature[slot], 0.5f) < 0)
            return false;
    }
    return true;
}

// ---- the passes

static bool takesPart(int entry)
{
    const PoseIndexEntry& e = *poseEntry(entry);
    return e.contentHash != 0 && !e.path.contains(QLatin1String("data/Brannoc/Quillon/custom"));
}

static bool sameHash(int a, int b)
{
    return poseEntry(a)->contentHash == poseEntry(b)->contentHash;
}

static void mark(bool (*repeats)(int earlier, int later))
{
    for (int j = 0; j < poseCount(); ++j) {
        for (int i = 0; takesPart(j) && i < j; ++i) {
            if (takesPart(i) && repeats(i, j))
                entryToChange(j)->contentHash = 0;
        }
    }
}

void markDuplicates()
{
    mark(sameHash);
}

void markMirrored()
{
    mark(reference::isMirrorOf);
}

void markSimilar()
{
    mark(reference::isSimilarPose);
}

// ---- browsing

float bestYawSimilarity(const DzQuat& hip)
{
    float best = -1000000;
    for (int i = 0; i < 360; ++i) {
        const float s = reference::partSimilarity(hip, browseSession().tables.yaw[i], 0.75f);
        if (s > best)
            best = s;
    }
    return best;
}

float browseScore(int entry)
{
    const PoseIndexEntry& e = *poseEntry(entry);
    const SimilarityFilters& filters = browseSession().tables.filters;
    float sum = filters.on(0) ? reference::bestYawSimilarity(e.signature[0]) : 0;
    for (int slot = 1; slot < 10; ++slot) {
        const DzQuat& against = browseSession().tables.references[SignatureSlot(slot)];
        sum += filters.on(slot) ? reference::partSimilarity(e.signature[slot], against, 0.75f)
                                : 1.0f;
    }
    return sum / (filters.on(0) ? 10.0f : 9.0f);
}

int rankOf(int entry, const std::vector<RankRecord>& records)
{
    const PoseIndexEntry& e = *poseEntry(entry);
    if (e.path.contains(QLatin1String("data/Brannoc/Quillon/custom")))
        return 3;
    for (const RankRecord& record : records) {
        if (record.key == e.contentHash)
            return record.rank;
    }
    return 0;
}

static bool isOfPair(const QString& path)
{
    return path.contains(QLatin1String("data/Brannoc/poses"), Qt::CaseInsensitive)
        && (path.contains(QLatin1String("0.duf")) || path.contains(QLatin1String("a.duf"))
            || path.contains(QLatin1String("b.duf")));
}

bool passes(int entry, const std::vector<RankRecord>& records)
{
    const PoseIndexEntry& e = *poseEntry(entry);
    const PluginSettings& s = pluginSettings();
    const bool included
        = (e.figureCode == 8 && s.includeFemale) || (e.figureCode == 264 && s.includeMale);
    return included && (s.rankFilter & (1 << reference::rankOf(entry, records)))
        && !(s.ignorePosePairs && isOfPair(e.path)) && e.hasSignature
        && reference::browseScore(entry) > 0;
}

std::vector<int> matches(const std::vector<RankRecord>& records)
{
    std::vector<int> found;
    for (int entry = 0; entry < poseCount(); ++entry) {
        if (passes(entry, records))
            found.push_back(entry);
    }
    return found;
}

// ---- identification

static bool has(const QString& text, const char* word)
{
    return text.contains(QLatin1String(word), Qt::CaseInsensitive);
}

static QString textOf(const QByteArray& bytes)
{
    QString text;
    for (const char byte : bytes)
        text += QLatin1Char(byte);
    return text;
}

unsigned bodyWordsIn(const QByteArray& bytes)
{
    const QString text = textOf(bytes);
    return (has(text, "bigtoe") ? BigToeWord : 0u) | (has(text, "pinky") ? PinkyWord : 0u)
        | (has(text, "head") ? HeadWord : 0u) | (has(text, "breast") ? BreastWord : 0u)
        | (has(text, "abdomen2") ? Abdomen2Word : 0u) | (has(text, "rheel") ? HeelWord : 0u);
}

quint32 figureCodeOf(const QByteArray& bytes, const QString& path)
{
    const QString text = textOf(bytes);
    if (!has(text, "bigtoe") || !has(text, "pinky") || !has(text, "head"))
        return 0;
    QString title;
    if (has(path, "data/Brannoc/poses")) {
        title = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
        title.chop(4);
    }
    quint32 code = has(text, "abdomen2") ? 2 : has(text, "rheel") ? 3 : 8;
    const bool female
        = has(text, "breast") || has(path, "g8f") || has(path, "female") || has(title, "f");
    if (!female && (has(path, "g8m") || has(path, "male") || has(title, "m")))
        code += 256;
    return code;
}

} // namespace reference
} // namespace quillon
