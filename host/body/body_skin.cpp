#include "host/body/body_skin.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <map>

namespace quillon {

static const char* const kFaceRoots[] = {"lowerFaceRig", "upperFaceRig"};
static const char* const kBrowLines[][3]
    = {{"lBrowInner", "lBrowMid", "lBrowOuter"}, {"rBrowInner", "rBrowMid", "rBrowOuter"}};
static const char* const kLipLines[][7]
    = {{"rLipCorner", "rLipUpperOuter", "rLipUpperInner", "LipUpperMiddle", "lLipUpperInner",
           "lLipUpperOuter", "lLipCorner"},
        {"rLipCorner", "rLipLowerOuter", "rLipLowerInner", "LipLowerMiddle", "lLipLowerInner",
            "lLipLowerOuter", "lLipCorner"}};

static const DzVec3 kMouth(0, 151.85f, 6.6f); // inside of it; dark
static const float kMouthCm = 2.3f;
static const QRgb kMouthColor = qRgb(70, 24, 24);
static const float kLipCm = 0.42f; // half the height of a painted lip ...
static const float kBrowCm = 0.3f; // ... and of a brow
static const float kWaistCm = 115.f; // a suit that ends above has straps ...
static const float kSuitNeckCm = 143.f; // ... up to here
static const float kSuitSleeveCm = 12.f; // and ends so far from the middle on the shoulders

// ---- lines and bones of the face -----------------------------------------------------------

static const BoneRow* boneRow(const FigureData& data, const char* name)
{
    for (const BoneRow& bone : data.bones)
        if (bone.name == QLatin1String(name))
            return &bone;
    return nullptr;
}

template <size_t N>
static std::vector<DzVec3> lineAlong(const FigureData& data, const char* const (&names)[N])
{
    std::vector<DzVec3> line;
    for (const char* name : names)
        if (const BoneRow* bone = boneRow(data, name))
            line.push_back(bone->center / data.scale);
    return line;
}

static bool isFaceBone(const FigureData& data, int bone)
{
    const int parent = data.bones[bone].parent;
    for (const char* root : kFaceRoots)
        if (parent >= 0 && data.bones[parent].name == QLatin1String(root))
            return true;
    return false;
}

static std::vector<FaceBone> faceBones(const FigureData& data)
{
    std::vector<FaceBone> face;
    for (int i = 0; i < int(data.bones.size()); ++i)
        if (isFaceBone(data, i))
            face.push_back({i, data.bones[i].end / data.scale, 3.f});
    for (FaceBone& bone : face)
        for (const FaceBone& other : face)
            if (other.bone != bone.bone)
                bone.reach = std::min(bone.reach, (other.at - bone.at).length());
    return face;
}

BodySkin bodySkin(const FigureData& data)
{
    BodySkin skin = {&data, bodyShape(data), faceBones(data), {}, {}};
    for (const auto& names : kBrowLines)
        skin.brows.push_back(lineAlong(data, names));
    for (const auto& names : kLipLines)
        skin.lips.push_back(lineAlong(data, names));
    return skin;
}

// ---- weights -------------------------------------------------------------------------------

// How far a bone's hold reaches into its neighbour: wide at the trunk, narrow at fingers and toes.
static float softness(const Lump& lump)
{
    const float thick = lump.radii.m_x > 0
        ? std::min(lump.radii.m_x, std::min(lump.radii.m_y, lump.radii.m_z))
        : 0.5f * (lump.ra + lump.rb);
    return std::max(0.3f, 0.8f * thick);
}

typedef std::map<int, float> BoneWeights;

static void scale(BoneWeights* weights, float factor)
{
    for (auto& weight : *weights)
        weight.second *= factor;
}

static float sum(const BoneWeights& weights)
{
    float total = 0;
    for (const auto& weight : weights)
        total += weight.second;
    return total;
}

static BoneWeights lumpWeights(const BodySkin& skin, const std::vector<int>& which, const DzVec3& p)
{
    std::vector<float> distances;
    float nearest = 1e6f;
    for (int i : which) {
        distances.push_back(lumpDistance(skin.shape.lumps[i], p));
        nearest = std::min(nearest, distances.back());
    }
    BoneWeights weights;
    for (size_t n = 0; n < which.size(); ++n) {
        const Lump& lump = skin.shape.lumps[which[n]];
        const float share = 1.f - (distances[n] - nearest) / softness(lump);
        if (share > 0)
            weights[lump.bone] = std::max(weights[lump.bone], share * share);
    }
    return weights;
}

static void addFaceWeights(const BodySkin& skin, const DzVec3& p, BoneWeights* weights)
{
    BoneWeights face;
    for (const FaceBone& bone : skin.faceBones) {
        const float r = (p - bone.at).length() / bone.reach;
        if (r < 1.8f)
            face[bone.bone] = std::exp(-r * r * 1.6f);
    }
    const float total = sum(face);
    if (total <= 0)
        return;
    const float hold = std::min(1.f, total);
    scale(weights, (1 - hold) / sum(*weights));
    scale(&face, hold / total);
    weights->insert(face.begin(), face.end());
}

void weighVertex(const BodySkin& skin, const std::vector<int>& near_, MeshVertex* vertex)
{
    BoneWeights weights = lumpWeights(skin, near_, vertex->position);
    if (vertex->position.m_y > 145.f)
        addFaceWeights(skin, vertex->position, &weights);
    std::vector<std::pair<float, int>> sorted;
    for (const auto& weight : weights)
        sorted.push_back({weight.second, weight.first});
    std::sort(sorted.rbegin(), sorted.rend());
    sorted.resize(4, {0.f, sorted.empty() ? 0 : sorted[0].second});
    float total = 0;
    for (const auto& weight : sorted)
        total += weight.first;
    for (int i = 0; i < 4; ++i) {
        vertex->bone[i] = sorted[i].second;
        vertex->weight[i] = total > 0 ? sorted[i].first / total : i == 0;
    }
}

// ---- paint ---------------------------------------------------------------------------------

static float distanceToLine(const std::vector<DzVec3>& line, const DzVec3& p)
{
    float nearest = 1e6f;
    for (size_t i = 1; i < line.size(); ++i) {
        const DzVec3 axis = line[i] - line[i - 1];
        const float along = (p - line[i - 1]).dot(axis) / axis.dot(axis);
        const DzVec3 foot = line[i - 1] + axis * std::min(1.f, std::max(0.f, along));
        nearest = std::min(nearest, (p - foot).length());
    }
    return nearest;
}

// The distance in the picture of the face: depth counts little.
static float nearLine(const std::vector<std::vector<DzVec3>>& lines, DzVec3 p)
{
    float nearest = 1e6f;
    for (std::vector<DzVec3> line : lines) {
        for (DzVec3& point : line)
            point.m_z *= 0.25f;
        DzVec3 flat = p;
        flat.m_z *= 0.25f;
        nearest = std::min(nearest, distanceToLine(line, flat));
    }
    return nearest;
}

// Distances to what is hair and what is not.
static void hairDistances(
    const BodySkin& skin, const std::vector<int>& which, const DzVec3& p, float* hair, float* flesh)
{
    *hair = *flesh = 1e6f;
    for (int i : which) {
        const Lump& lump = skin.shape.lumps[i];
        float* nearest = lump.hair ? hair : flesh;
        *nearest = std::min(*nearest, lumpDistance(lump, p));
    }
}

// How far inside the suit's cut a point lies, cm; negative: bare.
static float suitDepth(const FigureBuild& build, const DzVec3& p)
{
    const float across = std::fabs(p.m_x);
    const float front = std::min(1.f, std::max(0.f, 0.5f + p.m_z / 6.f));
    const float scoop = 1.f - std::min(1.f, across * across / 90.f);
    const bool straps = build.suitTop > kWaistCm;
    const float top = build.suitTop - (straps ? (3.f + 8.f * front) * scoop : 0.f);
    const float sleeve = kSuitSleeveCm + 0.2f * (kSuitNeckCm - p.m_y);
    return std::min(std::min(p.m_y - build.suitLegs, top - p.m_y), sleeve - across);
}

static void paintHead(const BodySkin& skin, const std::vector<int>& near_, MeshVertex* vertex)
{
    const FigureBuild& build = skin.data->build;
    const DzVec3& p = vertex->position;
    float hair, flesh;
    hairDistances(skin, near_, p, &hair, &flesh);
    float hairCover = flesh - hair;
    float lipCover = kNoPaintCm;
    if (p.m_z > 5.f) {
        hairCover = std::max(hairCover, kBrowCm - nearLine(skin.brows, p));
        lipCover = kLipCm - nearLine(skin.lips, p);
    }
    vertex->cover = std::max(hairCover, lipCover);
    vertex->paint = QColor(lipCover > hairCover ? build.lips : build.hair).rgb();
    if ((p - kMouth).length() < kMouthCm) {
        vertex->color = kMouthColor;
        vertex->cover = kNoPaintCm;
    }
}

void paintVertex(const BodySkin& skin, const std::vector<int>& near_, MeshVertex* vertex)
{
    const FigureBuild& build = skin.data->build;
    vertex->color = QColor(build.skin).rgb();
    if (vertex->position.m_y > 145.f) {
        paintHead(skin, near_, vertex);
    } else {
        vertex->paint = QColor(build.suit).rgb();
        vertex->cover = suitDepth(build, vertex->position);
    }
    vertex->cover = std::min(-kNoPaintCm, std::max(kNoPaintCm, vertex->cover));
}

} // namespace quillon
