#include "reference/scene_mesh_reference.h"

#include "host/body/body_mesh.h"

#include "dzbone.h"
#include "dzfigure.h"
#include "dzobject.h"
#include "dzscene.h"

#include <QColor>

#include <algorithm>
#include <cmath>

namespace quillon {
namespace reference {

namespace {

const QColor kSelectionColor(255, 176, 46);

// ---- light ---------------------------------------------------------------------------------

struct Lights {
    DzVec3 key, fill, eyeward; // unit, towards the light
};

// The lamps go with the camera, so that no view is dark.
Lights makeLights(const View& view)
{
    const DzVec3 back = -view.forward;
    return {(view.up * 0.75f - view.right * 0.55f + back * 0.75f).normalized(),
        (view.right * 0.9f + back * 0.25f + view.up * 0.1f).normalized(), back};
}

float squared(float v)
{
    return v * v;
}

// Colours are mixed as light: squared before, rooted after.
Rgb lit(const Lights& lights, const DzVec3& normal, QRgb color, float openness, float gloss)
{
    const float key = std::max(0.f, (normal.dot(lights.key) + 0.12f) / 1.12f);
    const float fill = std::max(0.f, normal.dot(lights.fill));
    const float sky = 0.5f + 0.5f * normal.m_y;
    const float facing = std::max(0.f, normal.dot(lights.eyeward));
    const float rim = squared(squared(1.f - facing)) * 0.12f * openness;
    const DzVec3 half = (lights.key + lights.eyeward).normalized();
    const float shine = gloss * std::pow(std::max(0.f, normal.dot(half)), 24.f) * openness;
    const float shade = 0.55f + 0.45f * openness;
    const float light[3] = {openness * (0.10f + 0.16f * sky) + shade * (0.80f * key + 0.08f * fill),
        openness * (0.10f + 0.17f * sky) + shade * (0.76f * key + 0.10f * fill),
        openness * (0.12f + 0.19f * sky) + shade * (0.70f * key + 0.14f * fill)};
    const int part[3] = {qRed(color), qGreen(color), qBlue(color)};
    float out[3];
    for (int i = 0; i < 3; ++i)
        out[i] = std::min(
            1.f, std::sqrt(squared(part[i] / 255.f) * light[i] * 1.05f + rim * 0.5f + shine));
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

SceneVertex placeVertex(
    const FigureInPlace& figure, const MeshVertex& vertex, const Lights& lights, bool highlight)
{
    DzVec3 position, normal;
    float selected = 0;
    for (int i = 0; i < 4 && vertex.weight[i] > 0; ++i) {
        const Placement& bone = figure.bones[vertex.bone[i]];
        position += bone.points.multVec(vertex.position) * vertex.weight[i];
        normal += turned(bone.normals, vertex.normal) * vertex.weight[i];
        selected += bone.selected ? vertex.weight[i] : 0.f;
    }
    const DzVec3 unit = normal.normalized();
    const float gloss = 0.045f;
    SceneVertex out = {
        position, lit(lights, unit, vertex.color, vertex.openness, gloss), {0, 0, 0}, vertex.cover};
    if (vertex.cover > kNoPaintCm)
        out.paint = lit(lights, unit, vertex.paint, vertex.openness, gloss);
    if (highlight && selected > 0) {
        out.color = tinted(out.color, selected);
        out.paint = tinted(out.paint, selected);
    }
    return out;
}

void addFigure(const FigureData& data, DzSkeleton* figure, const Lights& lights, bool highlight,
    SceneMesh* out)
{
    const FigureInPlace placed = placeFigure(data, figure, out);
    const BodyMesh& body = bodyMesh(data);
    const int first = int(out->vertices.size());
    for (const MeshVertex& vertex : body.vertices)
        out->vertices.push_back(placeVertex(placed, vertex, lights, highlight));
    for (size_t i = 0; i < body.triangles.size(); ++i) {
        out->triangles.push_back(first + body.triangles[i]);
        if (i % 3 == 0)
            out->ids.push_back(placed.ids[body.vertices[body.triangles[i]].bone[0]]);
    }
}

// ---- boxes ---------------------------------------------------------------------------------

void addBox(DzNode* node, const Lights& lights, bool highlight, SceneMesh* out)
{
    const DzBox3 box = node->getObject()->getGeometryBox();
    const Placement placed = placementOf(node);
    const DzVec3 corner[2] = {box.getMin(), box.getMax()};
    const QRgb color = qRgb(150, 160, 172);
    const int id = int(out->nodes.size());
    out->nodes.push_back(node);
    for (int axis = 0; axis < 3; ++axis)
        for (int side = 0; side < 2; ++side) {
            DzVec3 normal;
            normal[axis] = side ? 1.f : -1.f;
            Rgb shade = lit(lights, turned(placed.normals, normal), color, 1.f, 0.02f);
            if (highlight && placed.selected)
                shade = tinted(shade, 0.7f);
            const int first = int(out->vertices.size());
            for (int n = 0; n < 4; ++n) { // counter-clockwise for side 1
                const int u = n == 1 || n == 2;
                const int v = n >= 2;
                DzVec3 p;
                p[axis] = corner[side][axis];
                p[(axis + 1) % 3] = corner[u][(axis + 1) % 3];
                p[(axis + 2) % 3] = corner[v][(axis + 2) % 3];
                out->vertices.push_back({placed.points.multVec(p), shade, shade, -1.f});
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

SceneMesh sceneMesh(const View& view, bool highlight)
{
    SceneMesh mesh;
    const Lights lights = makeLights(view);
    for (int i = 0; dzScene && i < dzScene->getNumNodes(); ++i) {
        DzNode* node = dzScene->getNode(i);
        QString why;
        const FigureData* data = node->inherits("DzFigure")
            ? figureData(node->getObject() ? node->getObject()->getName() : QString(), &why)
            : nullptr;
        if (data)
            addFigure(*data, static_cast<DzSkeleton*>(node), lights, highlight, &mesh);
        else if (node->getObject() && node->getObject()->getGeometryBox().isValid())
            addBox(node, lights, highlight, &mesh);
    }
    return mesh;
}

} // namespace reference
} // namespace quillon
