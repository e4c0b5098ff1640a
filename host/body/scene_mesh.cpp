#include "host/body/scene_mesh.h"

#include "host/body/body_mesh.h"
#include "host/body/together.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzobject.h"
#include "dzscene.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillon {

const QColor kSelectionColor(255, 176, 46);

namespace {

// ---- light ---------------------------------------------------------------------------------

float squared(float v)
{
    return v * v;
}

// What falls on a point.
struct Light {
    float rgb[3];
    float rim, shine; // of any colour
};

Light lightOn(const Lights& lights, const DzVec3& normal, float openness, float gloss)
{
    const float key = std::max(0.f, (normal.dot(lights.key) + 0.12f) / 1.12f);
    const float fill = std::max(0.f, normal.dot(lights.fill));
    const float sky = 0.5f + 0.5f * normal.m_y;
    const float facing = std::max(0.f, normal.dot(lights.eyeward));
    const float rim = squared(squared(1.f - facing)) * 0.12f * openness;
    const float shine = gloss * std::pow(std::max(0.f, normal.dot(lights.half)), 24.f) * openness;
    const float shade = 0.55f + 0.45f * openness;
    return {{openness * (0.10f + 0.16f * sky) + shade * (0.80f * key + 0.08f * fill),
                openness * (0.10f + 0.17f * sky) + shade * (0.76f * key + 0.10f * fill),
                openness * (0.12f + 0.19f * sky) + shade * (0.70f * key + 0.14f * fill)},
        rim, shine};
}

// By channel of a colour, as light.
std::array<float, 256> squares()
{
    std::array<float, 256> all;
    for (size_t i = 0; i < all.size(); ++i)
        all[i] = squared(float(i) / 255.f);
    return all;
}

// Colours are mixed as light: squared before, rooted after.
Rgb lit(const Light& light, QRgb color)
{
    static const std::array<float, 256> kSquares = squares();
    const int part[3] = {qRed(color), qGreen(color), qBlue(color)};
    float out[3];
    for (int i = 0; i < 3; ++i)
        out[i] = std::min(1.f,
            std::sqrt(
                kSquares[size_t(part[i])] * light.rgb[i] * 1.05f + light.rim * 0.5f + light.shine));
    return {out[0], out[1], out[2]};
}

Rgb tinted(const Rgb& c, float share)
{
    const float s = 0.62f * share;
    return {c.r + (float(kSelectionColor.redF()) * (0.35f + 0.65f * c.r) - c.r) * s,
        c.g + (float(kSelectionColor.greenF()) * (0.35f + 0.65f * c.g) - c.g) * s,
        c.b + (float(kSelectionColor.blueF()) * (0.35f + 0.65f * c.b) - c.b) * s};
}

// ---- transforms ----------------------------------------------------------------------------

struct Placement {
    DzMatrix3 points; // from the node's own space (figure space for bones) to the world
    DzMatrix3 normals; // rotation only
    bool selected;
};

Placement placementOf(const DzNode* node)
{
    DzVec3 position;
    DzQuat rotation;
    DzMatrix3 scale;
    node->getWSTransform(position, rotation, scale);
    Placement out = {DzMatrix3(), DzMatrix3(), node->isSelected()};
    rotation.getMatrix(out.normals);
    const DzMatrix3 linear = scale * out.normals;
    const DzVec3 origin = linear.multVec(node->getOrigin());
    out.points = DzMatrix3(linear.row(0), linear.row(1), linear.row(2), position - origin);
    return out;
}

DzVec3 turned(const DzMatrix3& m, const DzVec3& v)
{
    return m.row(0) * v.m_x + m.row(1) * v.m_y + m.row(2) * v.m_z;
}

// ---- figures -------------------------------------------------------------------------------

const float kBodyGloss = 0.045f;

struct FigureInPlace {
    const FigureData* data;
    std::vector<Placement> bones; // a removed bone goes with its parent
    std::vector<int> ids;
};

FigureInPlace placeFigure(const FigureData& data, DzSkeleton* figure, SceneMesh* out)
{
    FigureInPlace placed;
    placed.data = &data;
    const int figureId = int(out->nodes.size());
    out->nodes.push_back(figure);
    const Placement root = placementOf(figure);
    for (const BoneRow& row : data.bones) {
        DzBone* bone = figure->findBone(row.name);
        if (bone) {
            placed.bones.push_back(placementOf(bone));
            placed.ids.push_back(int(out->nodes.size()));
            out->nodes.push_back(bone);
        } else {
            placed.bones.push_back(row.parent < 0 ? root : placed.bones[row.parent]);
            placed.ids.push_back(row.parent < 0 ? figureId : placed.ids[row.parent]);
        }
    }
    return placed;
}

SceneVertex placeVertex(const FigureInPlace& figure, const MeshVertex& vertex, bool highlight)
{
    SceneVertex out = {DzVec3(), DzVec3(), 0, &vertex};
    for (int i = 0; i < 4 && vertex.weight[i] > 0; ++i) {
        const Placement& bone = figure.bones[vertex.bone[i]];
        out.position += bone.points.multVec(vertex.position) * vertex.weight[i];
        out.normal += turned(bone.normals, vertex.normal) * vertex.weight[i];
        out.selected += bone.selected ? vertex.weight[i] : 0.f;
    }
    if (!highlight)
        out.selected = 0;
    return out;
}

void addFigure(const FigureData& data, DzSkeleton* figure, bool highlight, SceneMesh* out)
{
    const FigureInPlace placed = placeFigure(data, figure, out);
    const BodyMesh& body = bodyMesh(data);
    const size_t first = out->vertices.size(), count = body.vertices.size();
    out->vertices.resize(first + count);
    const auto place = [&](size_t from, size_t to) {
        for (size_t i = from; i < to; ++i)
            out->vertices[first + i] = placeVertex(placed, body.vertices[i], highlight);
    };
    runTogether([&] { place(0, count / 2); }, [&] { place(count / 2, count); });
    out->skins.push_back({figure, first, first + count});
    const size_t corners = out->triangles.size(), sides = out->ids.size();
    out->triangles.resize(corners + body.triangles.size());
    for (size_t i = 0; i < body.triangles.size(); ++i)
        out->triangles[corners + i] = int(first) + body.triangles[i];
    out->ids.resize(sides + body.bones.size());
    for (size_t i = 0; i < body.bones.size(); ++i)
        out->ids[sides + i] = placed.ids[size_t(body.bones[i])];
}

// ---- boxes ---------------------------------------------------------------------------------

const QRgb kBoxColor = qRgb(150, 160, 172);
const float kBoxGloss = 0.02f;
const float kSelectedBoxShare = 0.7f;

void addBox(DzNode* node, bool highlight, SceneMesh* out)
{
    const DzBox3 box = node->getObject()->getGeometryBox();
    const Placement placed = placementOf(node);
    const DzVec3 corner[2] = {box.getMin(), box.getMax()};
    const float selected = highlight && placed.selected ? kSelectedBoxShare : 0.f;
    const int id = int(out->nodes.size());
    out->nodes.push_back(node);
    for (int axis = 0; axis < 3; ++axis)
        for (int side = 0; side < 2; ++side) {
            DzVec3 normal;
            normal[axis] = side ? 1.f : -1.f;
            const DzVec3 outward = turned(placed.normals, normal);
            const int first = int(out->vertices.size());
            for (int n = 0; n < 4; ++n) { // counter-clockwise for side 1
                const int u = n == 1 || n == 2;
                const int v = n >= 2;
                DzVec3 p;
                p[axis] = corner[side][axis];
                p[(axis + 1) % 3] = corner[u][(axis + 1) % 3];
                p[(axis + 2) % 3] = corner[v][(axis + 2) % 3];
                out->vertices.push_back({placed.points.multVec(p), outward, selected, nullptr});
            }
            const int front[6] = {0, 1, 2, 0, 2, 3};
            const int back[6] = {0, 2, 1, 0, 3, 2};
            for (int n = 0; n < 6; ++n)
                out->triangles.push_back(first + (side ? front : back)[n]);
            out->ids.push_back(id);
            out->ids.push_back(id);
        }
}

} // namespace

static const FigureData* dataOf(const DzNode* node) // null: no figure
{
    QString why;
    return node->inherits("DzFigure") && node->getObject()
        ? figureData(node->getObject()->getName(), &why)
        : nullptr;
}

SceneMesh sceneMesh(bool highlight)
{
    SceneMesh mesh;
    for (int i = 0; dzScene && i < dzScene->getNumNodes(); ++i) {
        DzNode* node = dzScene->getNode(i);
        if (const FigureData* data = dataOf(node))
            addFigure(*data, static_cast<DzSkeleton*>(node), highlight, &mesh);
        else if (node->getObject() && node->getObject()->getGeometryBox().isValid())
            addBox(node, highlight, &mesh);
    }
    return mesh;
}

bool lowestPoint(const SceneMesh& mesh, const DzNode* figure, DzVec3* out)
{
    for (const FigureSkin& skin : mesh.skins) {
        if (skin.figure != figure || skin.first == skin.end)
            continue;
        *out = std::min_element(mesh.vertices.begin() + std::ptrdiff_t(skin.first),
            mesh.vertices.begin() + std::ptrdiff_t(skin.end),
            [](const SceneVertex& a, const SceneVertex& b) {
                return a.position.m_y < b.position.m_y;
            })->position;
        return true;
    }
    return false;
}

std::vector<DzVec3> skinPoints(const DzNode* figure)
{
    SceneMesh mesh;
    if (const FigureData* data = dataOf(figure))
        addFigure(*data, static_cast<DzSkeleton*>(const_cast<DzNode*>(figure)), false, &mesh);
    std::vector<DzVec3> points;
    points.reserve(mesh.vertices.size());
    for (const SceneVertex& vertex : mesh.vertices)
        points.push_back(vertex.position);
    return points;
}

Lights makeLights(const View& view)
{
    const DzVec3 back = -view.forward;
    const DzVec3 key = (view.up * 0.75f - view.right * 0.55f + back * 0.75f).normalized();
    return {key, (view.right * 0.9f + back * 0.25f + view.up * 0.1f).normalized(), back,
        (key + back).normalized()};
}

PointColor lightVertex(const SceneVertex& vertex, const Lights& lights)
{
    PointColor out = {{0, 0, 0}, {0, 0, 0}, -1.f};
    if (!vertex.body) {
        out.color = lit(lightOn(lights, vertex.normal, 1.f, kBoxGloss), kBoxColor);
    } else {
        const MeshVertex& body = *vertex.body;
        const Light light = lightOn(lights, vertex.normal.normalized(), body.openness, kBodyGloss);
        out.color = lit(light, body.color);
        out.cover = body.cover;
        if (body.cover > kNoPaintCm)
            out.paint = lit(light, body.paint);
    }
    if (vertex.selected > 0) {
        out.color = tinted(out.color, vertex.selected);
        out.paint = tinted(out.paint, vertex.selected);
    }
    return out;
}

} // namespace quillon
