// scan_model.h - a second opinion on a scan: signatures by forward kinematics of its own from the
// figure's JSON, and the verdicts that follow from them. Nothing of the plug-in and of the scene is
// used; quaternions are the usual ones here (v' = q v conj(q), right-handed) and become the host's
// by conjugation at the very end.
#pragma once

#include "host/figures/json_text.h"
#include "preset_json.h"

#include <QByteArray>
#include <QFile>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace model {

// ---- quaternions

struct Quat {
    double x, y, z, w;
};
struct Vec {
    double x, y, z;
};

inline Quat mul(const Quat& a, const Quat& b) // turns by b first
{
    return Quat {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
        a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
        a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w,
        a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

inline Quat conj(const Quat& q)
{
    return Quat {-q.x, -q.y, -q.z, q.w};
}

inline Quat unit(const Quat& q)
{
    const double n = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    return Quat {q.x / n, q.y / n, q.z / n, q.w / n};
}

inline Quat turnAbout(char axis, double deg)
{
    const double half = deg * 3.14159265358979323846 / 360;
    const double s = std::sin(half);
    return Quat {axis == 'X' ? s : 0, axis == 'Y' ? s : 0, axis == 'Z' ? s : 0, std::cos(half)};
}

inline Vec rotate(const Quat& q, const Vec& v)
{
    const Quat r = mul(mul(q, Quat {v.x, v.y, v.z, 0}), conj(q));
    return Vec {r.x, r.y, r.z};
}

// How far apart two rotations take an axis.
inline double apart(const Quat& a, const Quat& b, const Vec& axis)
{
    const Vec p = rotate(a, axis), q = rotate(b, axis);
    return std::sqrt(
        (p.x - q.x) * (p.x - q.x) + (p.y - q.y) * (p.y - q.y) + (p.z - q.z) * (p.z - q.z));
}

inline double apart(const Quat& a, const Quat& b)
{
    return std::max(apart(a, b, Vec {0, 1, 0}), apart(a, b, Vec {0, 0, 1}));
}

// ---- the skeleton

struct Bone {
    QByteArray order; // first letter is applied first
    Quat orientation;
    bool locked[3];
};
typedef QMap<QString, Bone> Skeleton;

inline Quat quatOf(const QVariant& list)
{
    const QVariantList n = list.toList();
    return Quat {n.at(0).toDouble(), n.at(1).toDouble(), n.at(2).toDouble(), n.at(3).toDouble()};
}

inline Skeleton readSkeleton(const QString& path)
{
    Skeleton skeleton;
    QFile file(path);
    QVariant data;
    QString why;
    if (!file.open(QIODevice::ReadOnly) || !quillon::parseJson(file.readAll(), &data, &why))
        return skeleton;
    const QVariantList bones = data.toMap()[QLatin1String("bones")].toList();
    for (const QVariant& each : bones) {
        const QVariantMap row = each.toMap();
        Bone bone;
        bone.order = row[QLatin1String("rotation_order")].toString().toLatin1();
        bone.orientation = quatOf(row[QLatin1String("orientation_quat_xyzw")]);
        const QVariantMap rotation = row[QLatin1String("rotation")].toMap();
        for (int axis = 0; axis < 3; ++axis)
            bone.locked[axis] = rotation[QString(QLatin1Char(char('X' + axis)))]
                                    .toMap()[QLatin1String("locked")]
                                    .toBool();
        skeleton[row[QLatin1String("name")].toString()] = bone;
    }
    return skeleton;
}

// ---- a pose

typedef QMap<QString, double> Angles; // "lShin/x": degrees, as the file has them

// Of each channel the first entry; what stands before the place where it is no JSON any more.
inline Angles anglesOf(const QByteArray& preset, bool* ok)
{
    static const QByteArray mark("\xef\xbb\xbf"), start("name://@selection/");
    Angles angles;
    const QByteArray text = preset.startsWith(mark) ? preset.mid(mark.size()) : preset;
    for (const auto& each : quillon::PresetJson::animations(text, ok)) {
        const int at = each.first.indexOf(":?rotation/");
        if (!each.first.startsWith(start) || at < 0 || !each.first.endsWith("/value"))
            continue;
        const QByteArray bone = each.first.mid(start.size(), at - start.size());
        const QString key = QLatin1String(bone + '/' + each.first.mid(at + 11, 1));
        if (!angles.contains(key))
            angles[key] = each.second;
    }
    return angles;
}

inline Quat localTurn(const Skeleton& skeleton, const Angles& angles, const char* name)
{
    const QString bone = QLatin1String(name);
    const Bone row = skeleton.value(bone);
    Quat turn = {0, 0, 0, 1};
    for (const char axis : row.order) {
        const QString key = bone + QLatin1Char('/') + QLatin1Char(char(axis - 'X' + 'x'));
        const double deg = row.locked[axis - 'X'] ? 0 : double(float(angles.value(key)));
        turn = mul(turnAbout(axis, deg), turn);
    }
    return mul(mul(row.orientation, turn), conj(row.orientation));
}

typedef std::array<Quat, 10> Signature; // in the usual convention

inline Signature signatureOf(const Skeleton& skeleton, const Angles& angles)
{
    const auto local = [&](const char* bone) { return localTurn(skeleton, angles, bone); };
    Signature s;
    s[0] = mul(local("hip"), local("pelvis"));
    s[1] = mul(mul(local("abdomenLower"), local("abdomenUpper")),
        mul(local("chestLower"), local("chestUpper")));
    s[2] = local("lShin");
    s[3] = local("rShin");
    s[4] = local("lThighBend");
    s[5] = local("rThighBend");
    s[6] = mul(local("lCollar"), local("lShldrBend"));
    s[7] = mul(local("rCollar"), local("rShldrBend"));
    s[8] = local("lForearmBend");
    s[9] = local("rForearmBend");
    return s;
}

// ---- verdicts

// Above kMargin: certainly so; below -kMargin: certainly not; between: rounding decides.
static const double kMargin = 1e-4;

inline double mirrorMargin(const Signature& a, const Signature& b)
{
    static const int other[10] = {0, 1, 3, 2, 5, 4, 7, 6, 9, 8};
    double most = 0;
    for (int slot = 0; slot < 10; ++slot) {
        const Quat &p = a[size_t(slot)], &q = b[size_t(other[slot])];
        most = std::max(most, std::max(std::fabs(p.y + q.y), std::fabs(p.z + q.z)));
    }
    return 0.1 - most;
}

inline double similarMargin(const Signature& a, const Signature& b)
{
    double most = 0;
    for (size_t slot = 0; slot < 10; ++slot)
        most = std::max(most, apart(a[slot], b[slot]));
    return 0.4995 - most; // where a score of 0.001 is reached
}

struct TypeModel {
    Quat base; // of the hip
    Signature parts; // the first is not used
    std::array<bool, 10> filter;
};

inline double typeMargin(const TypeModel& type, const Signature& pose)
{
    double least = 2; // margin of the worst slot
    if (type.filter[0]) {
        double nearest = 2;
        for (int deg = 0; deg < 360; ++deg)
            nearest = std::min(nearest, apart(pose[0], mul(turnAbout('Y', deg), type.base)));
        least = std::min(least, 0.74925 - nearest);
    }
    for (size_t slot = 1; slot < 10; ++slot) {
        if (type.filter[slot])
            least = std::min(least, 0.74925 - apart(pose[slot], type.parts[slot]));
    }
    return least;
}

inline Quat fromHost(double x, double y, double z, double w)
{
    return conj(unit(Quat {x, y, z, w}));
}

// Pose types 0 to 7.
inline TypeModel typeModel(int type)
{
    static const double bases[8][4]
        = {{0, 0, 0, 1}, {0, 0, 0, 1}, {0, 0, 0, 1}, {0, -0.707, -0.707, 0}, {-0.707, 0, 0, 0.707},
            {-0.5, 0.5, 0.5, 0.5}, {-0.5, -0.5, -0.5, 0.5}, {0, 0, -1, 0}};
    const double* b = bases[type];
    TypeModel m;
    m.base = fromHost(b[0], b[1], b[2], b[3]);
    m.parts.fill(Quat {0, 0, 0, 1});
    m.filter.fill(false);
    m.filter[0] = type != 0;
    m.filter[1] = type == 3 || type == 4;
    m.filter[4] = m.filter[5] = type == 1 || type == 2;
    if (type == 1) {
        m.parts[4] = fromHost(0.698, 0.036, -0.122, 0.704);
        m.parts[5] = fromHost(0.698, -0.036, 0.122, 0.704);
    }
    return m;
}

} // namespace model
