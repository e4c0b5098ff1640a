#include "host/body/body_shape.h"

#include "host/body/body_shape_table.h"

#include <algorithm>
#include <cmath>

namespace quillon {

static float buildFactor(const FigureBuild& build, BuildPart part)
{
    switch (part) {
    case Shoulders:
        return build.shoulders;
    case Chest:
        return build.chest;
    case Waist:
        return build.waist;
    case Hips:
        return build.hips;
    case Limbs:
        return build.limbs;
    case Bust:
        return build.bust;
    case Pecs:
        return 1.f - build.bust;
    case Jaw:
        return build.jaw;
    case Bun:
        return build.bun;
    default:
        return 1.f;
    }
}

static int boneNumber(const FigureData& data, const QString& name)
{
    for (size_t i = 0; i < data.bones.size(); ++i)
        if (data.bones[i].name == name)
            return int(i);
    return -1;
}

static DzVec3 mirrored(const DzVec3& v)
{
    return DzVec3(-v.m_x, v.m_y, v.m_z);
}

void finishLump(Lump* lump)
{
    lump->axis = lump->b - lump->a;
    lump->length2 = lump->axis.dot(lump->axis);
    lump->inverseLength2 = lump->length2 > 0 ? 1.f / lump->length2 : 0.f;
    lump->slope = lump->ra - lump->rb;
    lump->rest2 = lump->length2 - lump->slope * lump->slope;
    for (int i = 0; i < 3 && lump->radii[i] > 0; ++i) {
        lump->inverseRadii[i] = 1.f / lump->radii[i];
        lump->inverseRadii2[i] = lump->inverseRadii[i] * lump->inverseRadii[i];
    }
}

static void append(Lump lump, BodyShape* shape)
{
    finishLump(&lump);
    (lump.carves ? shape->carves : shape->lumps).push_back(lump);
}

// A row of a left bone stands for the right one as well.
static void appendBothSides(const FigureData& data, QString bone, Lump lump, BodyShape* shape)
{
    lump.bone = boneNumber(data, bone);
    Q_ASSERT_X(lump.bone >= 0, "body_shape", "a row names no bone");
    append(lump, shape);
    if (!bone.startsWith('l') || !bone.at(1).isUpper())
        return;
    bone[0] = 'r';
    lump.bone = boneNumber(data, bone);
    lump.a = mirrored(lump.a);
    lump.b = mirrored(lump.b);
    append(lump, shape);
}

static void appendCone(const FigureData& data, const ConeRow& row, BodyShape* shape)
{
    const float factor = buildFactor(data.build, row.part);
    const BoneRow& bone = data.bones[boneNumber(data, row.bone)];
    Lump lump = Lump();
    lump.a = bone.center / data.scale;
    lump.b = bone.end / data.scale;
    lump.ra = row.ra * factor;
    lump.rb = row.rb * factor;
    lump.blend = row.blend;
    appendBothSides(data, row.bone, lump, shape);
}

static void appendEllipsoid(const FigureData& data, const EllipsoidRow& row, BodyShape* shape)
{
    const float factor = buildFactor(data.build, row.part);
    if (factor < 0.05f)
        return;
    Lump lump = Lump();
    lump.a = lump.b = DzVec3(row.x, row.y, row.z);
    // The trunk grows in width and depth, everything else evenly.
    const bool trunk = row.part == Chest || row.part == Waist || row.part == Hips;
    lump.radii = DzVec3(row.rx * factor, row.ry * (trunk ? 1.f : factor),
        row.rz * (trunk ? std::sqrt(factor) : factor));
    lump.blend = row.blend;
    lump.hair = row.kind == Hair;
    lump.carves = row.kind == Carve;
    appendBothSides(data, row.bone, lump, shape);
}

BodyShape bodyShape(const FigureData& data)
{
    BodyShape shape;
    for (const ConeRow& row : kConeRows)
        appendCone(data, row, &shape);
    for (const EllipsoidRow& row : kEllipsoidRows)
        appendEllipsoid(data, row, &shape);
    return shape;
}

// ---- distances -----------------------------------------------------------------------------

static float coneDistance(const Lump& c, const DzVec3& p)
{
    const DzVec3 pa = p - c.a;
    const float y = pa.dot(c.axis);
    const float z = y - c.length2;
    const DzVec3 across = pa * c.length2 - c.axis * y;
    const float x2 = across.dot(across);
    const float y2 = y * std::fabs(y) * c.length2; // signed squares
    const float z2 = z * std::fabs(z) * c.length2;
    const float k = c.slope * std::fabs(c.slope) * x2;
    if (c.rest2 * z2 > k)
        return std::sqrt(x2 + z2) * c.inverseLength2 - c.rb;
    if (c.rest2 * y2 < k)
        return std::sqrt(x2 - y2) * c.inverseLength2 - c.ra;
    return (std::sqrt(x2 * c.rest2 * c.inverseLength2) + y * c.slope) * c.inverseLength2 - c.ra;
}

static DzVec3 scaled(const DzVec3& v, const DzVec3& by)
{
    return DzVec3(v.m_x * by.m_x, v.m_y * by.m_y, v.m_z * by.m_z);
}

static float ellipsoidDistance(const Lump& e, const DzVec3& p)
{
    const DzVec3 d = p - e.a;
    const float k0 = scaled(d, e.inverseRadii).length();
    const float k1 = scaled(d, e.inverseRadii2).length();
    if (k1 < 1e-6f)
        return -std::min(e.radii.m_x, std::min(e.radii.m_y, e.radii.m_z));
    return k0 * (k0 - 1.f) / k1;
}

float lumpDistance(const Lump& lump, const DzVec3& p)
{
    return lump.radii.m_x > 0 ? ellipsoidDistance(lump, p) : coneDistance(lump, p);
}

static float smoothMin(float a, float b, float blend)
{
    const float h = blend - std::fabs(a - b);
    return h > 0 ? std::min(a, b) - h * h * 0.25f / blend : std::min(a, b);
}

static const float kFar = 1e6f;

float bodyDistance(const BodyShape& shape, const std::vector<int>& which, const DzVec3& p)
{
    float d = kFar;
    for (int i : which)
        d = smoothMin(d, lumpDistance(shape.lumps[i], p), shape.lumps[i].blend);
    for (const Lump& carve : shape.carves)
        d = -smoothMin(-d, lumpDistance(carve, p), carve.blend);
    return d;
}

DzVec3 bodyNormal(const BodyShape& shape, const std::vector<int>& which, const DzVec3& p)
{
    const float e = 0.1f;
    DzVec3 n;
    for (int i = 0; i < 3; ++i) {
        DzVec3 step;
        step[i] = e;
        n[i] = bodyDistance(shape, which, p + step) - bodyDistance(shape, which, p - step);
    }
    return n.normalized();
}

std::vector<int> lumpsNear(const BodyShape& shape, const DzVec3& p, float radius)
{
    std::vector<float> distances;
    float nearest = kFar;
    for (const Lump& lump : shape.lumps) {
        distances.push_back(lumpDistance(lump, p));
        nearest = std::min(nearest, distances.back());
    }
    std::vector<int> which;
    for (size_t i = 0; i < distances.size(); ++i)
        if (distances[i] < nearest + 2.2f * radius + shape.lumps[i].blend)
            which.push_back(int(i));
    return which;
}

} // namespace quillon
