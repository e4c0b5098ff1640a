#include "host/body/body_mesh.h"

#include "host/body/body_skin.h"
#include "host/body/surface_nets.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <map>

namespace quillon {

namespace {

// Where the mesh is finer than elsewhere. The coarse mesh stops a little inside a fine region, so
// that the two overlap; both follow the same field, so no seam shows.
struct Region {
    DzVec3 low, high;
    float cellCm;
};

const Region kFineRegions[] = {
    {DzVec3(-11, 145, -16), DzVec3(11, 173, 13), 0.38f},
    {DzVec3(51, 82, -6), DzVec3(70, 101, 13), 0.34f},
    {DzVec3(-70, 82, -6), DzVec3(-51, 101, 13), 0.34f},
    {DzVec3(12, -1, -10), DzVec3(28, 9, 21), 0.6f},
    {DzVec3(-28, -1, -10), DzVec3(-12, 9, 21), 0.6f},
};
const Region kWholeBody = {DzVec3(-72, -3, -20), DzVec3(72, 175, 22), 1.25f};
const float kOverlapCm = 1.6f;
const float kSunkCm = 0.3f;
const float kAroundCm = 8.f; // so far from the surface things take light from it

// How far inside a fine region a point lies, cm; negative outside all of them.
float depthInFine(const DzVec3& p)
{
    float depth = -1;
    for (const Region& fine : kFineRegions) {
        float inside = 1e6f;
        for (int i = 0; i < 3; ++i)
            inside = std::min(inside, std::min(p[i] - fine.low[i], fine.high[i] - p[i]));
        depth = std::max(depth, inside);
    }
    return depth;
}

// The coarse mesh goes down under the fine one, from nothing at its border.
float sunkCm(const DzVec3& p)
{
    return kSunkCm * std::min(1.f, std::max(0.f, depthInFine(p) / kOverlapCm));
}

class BodyField : public Field {
public:
    BodyField(const BodySkin& skin, bool coarse, BodyMesh* out)
        : m_skin(skin)
        , m_coarse(coarse)
        , m_out(out)
    {
    }

    float enterBlock(const DzVec3& centre, float radius) override
    {
        m_near = lumpsNear(m_skin.shape, centre, radius);
        m_around = lumpsNear(m_skin.shape, centre, radius + kAroundCm);
        return bodyDistance(m_skin.shape, m_near, centre);
    }
    float distance(const DzVec3& p) const override
    {
        return bodyDistance(m_skin.shape, m_near, p);
    }
    bool keeps(const DzVec3& vertex) const override
    {
        return !m_coarse || depthInFine(vertex) < kOverlapCm;
    }
    void vertexMade(const DzVec3& p) override
    {
        MeshVertex vertex = MeshVertex();
        vertex.position = p;
        for (int i = 0; i < 2; ++i) { // onto the surface; below a fine mesh, under it
            vertex.normal = bodyNormal(m_skin.shape, m_near, vertex.position);
            const float off
                = distance(vertex.position) + (m_coarse ? sunkCm(vertex.position) : 0.f);
            vertex.position -= vertex.normal * std::min(0.5f, std::max(-0.5f, off));
        }
        vertex.openness = openness(vertex);
        weighVertex(m_skin, m_near, &vertex);
        paintVertex(m_skin, m_near, &vertex);
        m_out->vertices.push_back(vertex);
    }

private:
    // How freely the field grows along the normal: less in a fold.
    float openness(const MeshVertex& vertex) const
    {
        float hidden = 0;
        float weight = 0.5f;
        for (float step = 0.8f; step < kAroundCm; step *= 2.2f, weight *= 0.75f) {
            const float d
                = bodyDistance(m_skin.shape, m_around, vertex.position + vertex.normal * step);
            hidden += weight * std::max(0.f, step - d) / step;
        }
        return std::max(0.25f, 1.f - 0.9f * hidden);
    }

    const BodySkin& m_skin;
    bool m_coarse;
    BodyMesh* m_out;
    std::vector<int> m_near; // lumps that shape the block
    std::vector<int> m_around; // and those that may shade it
};

// ---- eyes ----------------------------------------------------------------------------------

const float kEyeCm = 1.36f;

struct EyeRing {
    float angleDeg; // from the line of sight
    QColor color;
};

std::vector<EyeRing> eyeRings(const FigureBuild& build)
{
    const QColor white(236, 232, 226);
    const QColor pupil(18, 14, 14);
    const QColor iris(build.iris);
    return {{0, pupil}, {11, pupil}, {11, iris.lighter(120)}, {24, iris}, {29, iris.darker(190)},
        {31, white}, {50, white}, {75, white}, {100, white}};
}

// Half a ball around the eye's centre, facing forward; its painted rings are sharp.
void appendEye(const FigureData& data, int bone, BodyMesh* out)
{
    const int sides = 28;
    const std::vector<EyeRing> rings = eyeRings(data.build);
    const int first = int(out->vertices.size());
    for (const EyeRing& ring : rings)
        for (int side = 0; side < sides; ++side) {
            const float a = ring.angleDeg * float(M_PI / 180);
            const float b = side * float(2 * M_PI / sides);
            MeshVertex vertex = MeshVertex();
            vertex.normal
                = DzVec3(std::sin(a) * std::cos(b), std::sin(a) * std::sin(b), std::cos(a));
            vertex.position = data.bones[bone].center / data.scale + vertex.normal * kEyeCm;
            vertex.bone[0] = vertex.bone[1] = vertex.bone[2] = vertex.bone[3] = bone;
            vertex.weight[0] = 1;
            vertex.color = vertex.paint = ring.color.rgb();
            vertex.cover = kNoPaintCm;
            vertex.openness = 0.9f;
            out->vertices.push_back(vertex);
        }
    for (int ring = 0; ring + 1 < int(rings.size()); ++ring)
        for (int side = 0; side < sides; ++side) {
            const int a = first + ring * sides + side;
            const int b = first + ring * sides + (side + 1) % sides;
            const int quad[6] = {a, a + sides, b + sides, a, b + sides, b};
            out->triangles.insert(out->triangles.end(), quad, quad + 6);
        }
}

void meshRegion(const BodySkin& skin, const Region& region, bool coarse, BodyMesh* out)
{
    BodyField field(skin, coarse, out);
    meshSurface(&field, DzBox3(region.low, region.high), region.cellCm, int(out->vertices.size()),
        &out->triangles);
}

BodyMesh makeMesh(const FigureData& data)
{
    BodyMesh mesh;
    const BodySkin skin = bodySkin(data);
    meshRegion(skin, kWholeBody, true, &mesh);
    for (const Region& fine : kFineRegions)
        meshRegion(skin, fine, false, &mesh);
    for (int i = 0; i < int(data.bones.size()); ++i)
        if (data.bones[i].name == "lEye" || data.bones[i].name == "rEye")
            appendEye(data, i, &mesh);
    for (MeshVertex& vertex : mesh.vertices)
        vertex.position *= data.scale;
    return mesh;
}

} // namespace

const BodyMesh& bodyMesh(const FigureData& data)
{
    static std::map<QString, BodyMesh> meshes;
    BodyMesh& mesh = meshes[data.name];
    if (mesh.vertices.empty()) {
        mesh = makeMesh(data);
        for (size_t i = 0; i < mesh.triangles.size(); i += 3)
            mesh.bones.push_back(mesh.vertices[size_t(mesh.triangles[i])].bone[0]);
    }
    return mesh;
}

} // namespace quillon
