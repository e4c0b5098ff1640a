// samples_model.h - the demo poses as the test reads them: files, channels, where bones are, and
// what a scan keeps, worked out with mathematics of its own from the figure's JSON file. Space:
// matrices and quaternions for column vectors, right-handed; degrees, centimetres.
#pragma once

#include "figure_files.h"
#include "preset_json.h"

#include "dzgzio.h"

#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <vector>

namespace samples {

inline QString contentFolder()
{
    return QLatin1String(QUILLON_SOURCE_DIR "/samples/content");
}

// ---- mathematics

struct V {
    double x, y, z;
};
inline V operator+(V a, V b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline V operator-(V a, V b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline double length(V a)
{
    return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
}

struct Q {
    double x, y, z, w;
};
inline Q operator*(Q a, Q b) // turns by b first
{
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
        a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
        a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w,
        a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}
inline Q conjugate(Q q)
{
    return {-q.x, -q.y, -q.z, q.w};
}
inline V turned(Q q, V v)
{
    const Q r = q * Q {v.x, v.y, v.z, 0} * conjugate(q);
    return {r.x, r.y, r.z};
}
inline Q axisTurn(int axis, double deg)
{
    const double half = deg * 3.14159265358979323846 / 360;
    Q q = {0, 0, 0, std::cos(half)};
    (axis == 0 ? q.x : axis == 1 ? q.y : q.z) = std::sin(half);
    return q;
}

// ---- the figure

struct Bone {
    QByteArray name;
    int parent;
    QString order;
    V center, end;
    Q orientation;
    double low[3], high[3];
};

inline V point(const QVariant& list)
{
    const QVariantList p = list.toList();
    return {p.at(0).toDouble(), p.at(1).toDouble(), p.at(2).toDouble()};
}

inline Bone boneOf(const QVariantMap& row, const QHash<QByteArray, int>& numbers)
{
    const QVariantList o = row.value("orientation_quat_xyzw").toList();
    Bone bone = {row.value("name").toByteArray(),
        numbers.value(row.value("parent").toByteArray(), -1),
        row.value("rotation_order").toString(), point(row.value("center")), point(row.value("end")),
        {o.at(0).toDouble(), o.at(1).toDouble(), o.at(2).toDouble(), o.at(3).toDouble()}, {}, {}};
    const QVariantMap rotation = row.value("rotation").toMap();
    for (int axis = 0; axis < 3; ++axis) {
        const QVariantMap channel = rotation.value(QString(QLatin1Char("XYZ"[axis]))).toMap();
        bone.low[axis] = channel.value("min").toDouble();
        bone.high[axis] = channel.value("max").toDouble();
    }
    return bone;
}

struct Rig {
    std::vector<Bone> bones;
    QHash<QByteArray, int> number;

    Rig()
    {
        for (const QVariant& row : figureRows("skeleton.json", "bones")) {
            const Bone bone = boneOf(row.toMap(), number);
            number.insert(bone.name, int(bones.size()));
            bones.push_back(bone);
        }
    }
};

inline const Rig& rig()
{
    static const Rig rig;
    return rig;
}

// ---- files

// "lShin:?rotation/x" and "#pCTRLHipBend", as in the addresses.
typedef QHash<QByteArray, double> Channels;

struct Preset {
    QString path; // below the content folder
    QByteArray packed, text; // text: unpacked
    bool isJson;
    int entries;
    Channels channels;

    QString product() const
    {
        return path.left(path.lastIndexOf(QLatin1Char('/')));
    }
    QString title() const
    {
        return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1).section(QLatin1Char('.'), 0, 0);
    }
    bool isGzip() const
    {
        return packed.startsWith("\x1f\x8b");
    }
    bool isOf(const char* folder) const
    {
        return path.contains(QLatin1String(folder));
    }
    double at(const QByteArray& key) const
    {
        return channels.value(key, 0);
    }
};

inline QByteArray unpacked(QFile* file)
{
    QByteArray bytes = file->readAll();
    if (!bytes.startsWith("\x1f\x8b"))
        return bytes;
    file->seek(0);
    DzGzIO gzip(file);
    gzip.open(QIODevice::ReadOnly);
    QByteArray text;
    char block[4096];
    qint64 count = 0;
    while ((count = gzip.read(block, sizeof block)) > 0) // of a damaged file what there is
        text.append(block, int(count));
    return text;
}

inline Channels channelsOf(const QList<QPair<QByteArray, double>>& entries)
{
    Channels channels;
    for (const QPair<QByteArray, double>& entry : entries) {
        QByteArray key = entry.first;
        key.replace("name://@selection/", "");
        key.replace("name://@selection", "");
        key.replace(":?value/value", "");
        key.replace("/value", "");
        channels.insert(key, entry.second);
    }
    return channels;
}

inline Preset presetOf(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    Preset preset;
    preset.path = path.mid(contentFolder().size() + 1);
    preset.packed = file.readAll();
    file.seek(0);
    preset.text = unpacked(&file);
    const QList<QPair<QByteArray, double>> entries
        = quillon::PresetJson::animations(preset.text, &preset.isJson);
    preset.entries = entries.size();
    preset.channels = channelsOf(entries);
    return preset;
}

// All presets, sorted by path.
inline const std::vector<Preset>& presets()
{
    static std::vector<Preset> all;
    if (!all.empty())
        return all;
    QStringList paths;
    QDirIterator walk(contentFolder(), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (path.endsWith(QLatin1String(".duf"), Qt::CaseInsensitive))
            paths << path;
    }
    paths.sort();
    for (const QString& path : static_cast<const QStringList&>(paths))
        all.push_back(presetOf(path));
    return all;
}

// Whether it tells translation and rotation of every bone.
inline bool isWholeBody(const Preset& preset)
{
    if (!preset.isJson || !preset.text.contains("\"preset_pose\""))
        return false;
    for (const Bone& bone : rig().bones)
        for (const char* channel : {"translation/x", "translation/y", "translation/z", "rotation/x",
                 "rotation/y", "rotation/z"})
            if (!preset.channels.contains(bone.name + ":?" + channel))
                return false;
    return true;
}

// ---- poses

inline Q localTurn(const Preset& preset, const Bone& bone)
{
    Q turn = {0, 0, 0, 1};
    for (const QChar letter : bone.order) {
        const int axis = letter.toLatin1() - 'X';
        const QByteArray key = bone.name + ":?rotation/" + char('x' + axis);
        turn = axisTurn(axis, preset.at(key)) * turn;
    }
    return bone.orientation * turn * conjugate(bone.orientation);
}

// Of both ends of every bone but the soft ones; scale: of the figure.
inline double lowestPoint(const Preset& preset, double scale)
{
    std::vector<Q> turns;
    std::vector<V> places;
    double lowest = 1e9;
    for (const Bone& bone : rig().bones) {
        V place = bone.center;
        Q turn = localTurn(preset, bone);
        if (bone.parent < 0) {
            place = place + V {0, preset.at(bone.name + ":?translation/y") / scale, 0};
        } else {
            const V offset = bone.center - rig().bones[size_t(bone.parent)].center;
            place = places[size_t(bone.parent)] + turned(turns[size_t(bone.parent)], offset);
            turn = turns[size_t(bone.parent)] * turn;
        }
        places.push_back(place);
        turns.push_back(turn);
        const double endY = (place + turned(turn, bone.end - bone.center)).y;
        if (!bone.name.endsWith("Pectoral"))
            lowest = std::min(lowest, std::min(place.y, endY));
    }
    return lowest * scale;
}

// ---- what a scan compares

enum {
    Hip,
    Torso,
    LeftShin,
    RightShin,
    LeftThigh,
    RightThigh,
    LeftArm,
    RightArm,
    LeftForearm,
    RightForearm,
    SlotCount
};

typedef std::array<Q, SlotCount> Signature;

// Of bones from the one that turns last to the one that turns first.
inline Q chain(const Preset& preset, std::initializer_list<const char*> names)
{
    Q turn = {0, 0, 0, 1};
    for (const char* name : names)
        turn = turn * localTurn(preset, rig().bones[size_t(rig().number.value(name))]);
    return turn;
}

inline Signature signatureOf(const Preset& p)
{
    return {chain(p, {"hip", "pelvis"}),
        chain(p, {"abdomenLower", "abdomenUpper", "chestLower", "chestUpper"}), chain(p, {"lShin"}),
        chain(p, {"rShin"}), chain(p, {"lThighBend"}), chain(p, {"rThighBend"}),
        chain(p, {"lCollar", "lShldrBend"}), chain(p, {"rCollar", "rShldrBend"}),
        chain(p, {"lForearmBend"}), chain(p, {"rForearmBend"})};
}

// The larger way that the ends of the axes Y and Z have from one turn to the other.
inline double apart(Q a, Q b)
{
    return std::max(length(turned(a, V {0, 1, 0}) - turned(b, V {0, 1, 0})),
        length(turned(a, V {0, 0, 1}) - turned(b, V {0, 0, 1})));
}

inline bool passes(Q a, Q b, double tolerance)
{
    return 1 - apart(a, b) / tolerance > 0.001;
}

inline bool isMirror(const Signature& a, const Signature& b)
{
    static const int kOther[SlotCount] = {Hip, Torso, RightShin, LeftShin, RightThigh, LeftThigh,
        RightArm, LeftArm, RightForearm, LeftForearm};
    for (int i = 0; i < SlotCount; ++i) {
        const Q p = a[size_t(i)], q = b[size_t(kOther[i])];
        if (std::fabs(p.y + q.y) >= 0.1 || std::fabs(p.z + q.z) >= 0.1)
            return false;
    }
    return true;
}

inline bool isSimilar(const Signature& a, const Signature& b)
{
    for (size_t i = 0; i < SlotCount; ++i)
        if (!passes(a[i], b[i], 0.5))
            return false;
    return true;
}

} // namespace samples
