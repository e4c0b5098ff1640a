// finder_fixture.h - what tests of the Pose Finder share: a figure in a scene, an application with
// content directories, the index and rank stores, and signatures and pose files made of numbers.
#pragma once

#include "pose_fixture.h"

#include "figure/selected_figure.h"
#include "finder/browse_session.h"
#include "finder/finder_calls.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "ground/data_folder.h"
#include "ground/plugin_settings.h"

#include "dzcontentmgr.h"

namespace quillon {

static const double kPi = 3.14159265358979323846;

// The process-wide state of the Pose Finder as after the pane's start.
struct FinderFixture : PoseFixture {
    explicit FinderFixture(const QString& name = QLatin1String("Genesis8Female"))
        : PoseFixture(name)
    {
        locateDataFiles();
        pluginSettings() = PluginSettings();
        browseSession() = BrowseSession();
        createPoseIndex();
        createRankStore();
    }
    ~FinderFixture()
    {
        freeRankStore();
        freePoseIndex();
    }
    void setContent(const QStringList& directories)
    {
        app.getContentMgr()->setContentDirectories(directories);
    }
};

// Only the stores, for tests that need no figure.
struct StoreFixture {
    StoreFixture()
    {
        pluginSettings() = PluginSettings();
        browseSession() = BrowseSession();
        createPoseIndex();
        createRankStore();
        createReadBuffer();
    }
    ~StoreFixture()
    {
        freeReadBuffer();
        freeRankStore();
        freePoseIndex();
    }
};

// ---- rotations and entries

// Right-handed, in degrees.
inline DzQuat turn(double x, double y, double z, double deg)
{
    return DzQuat(DzVec3(float(x), float(y), float(z)), deg * kPi / 180);
}

inline DzQuat randomRotation(Random* random)
{
    return DzQuat(random->between(-1, 1), random->between(-1, 1), random->between(-1, 1),
        random->between(-1, 1));
}

// An entry as a finished scan leaves it.
inline int addEntry(const QString& path, quint32 hash, quint32 code = kFemaleCode)
{
    const int entry = appendPose(path);
    entryToChange(entry)->contentHash = hash;
    entryToChange(entry)->figureCode = code;
    entryToChange(entry)->hasSignature = true;
    return entry;
}

inline void randomSignature(Random* random, int entry)
{
    for (DzQuat& each : entryToChange(entry)->signature)
        each = randomRotation(random);
}

// ---- pose files

typedef QMap<QByteArray, double> PoseValues; // "lShin/x": degrees

static const char* const kBodyMarks[] = {"lBigToe", "lPinky1", "head"}; // of a whole body

// A preset with these rotations, and with the marks of a pose of the whole body.
inline QByteArray poseFileText(const PoseValues& values, const QByteArray& comment = QByteArray())
{
    QList<QByteArray> entries;
    for (const char* mark : kBodyMarks)
        entries << valueEntry(("/" + QByteArray(mark) + ":?rotation/x").constData(), "0");
    for (auto each = values.constBegin(); each != values.constEnd(); ++each) {
        const QByteArray url = "/" + QByteArray(each.key()).replace('/', ":?rotation/");
        entries << valueEntry(
            url.constData(), QByteArray::number(each.value(), 'g', 7).constData());
    }
    return presetText(entries) + comment;
}

inline QStringList indexedPaths()
{
    QStringList paths;
    for (int i = 0; i < poseCount(); ++i)
        paths << poseEntry(i)->path;
    return paths;
}

} // namespace quillon
