// pose_fixture.h - what tests of pose files share: a figure in a scene with an application whose
// temporary folder is the test's own, preset texts made line by line, recorded values, the corpus.
#pragma once

#include "figure_fixture.h"
#include "frame_fixture.h"

#include "figure/figure_lookup.h"
#include "posefile/pose_calls.h"
#include "posefile/pose_channels.h"
#include "posefile/pose_rewriter.h"
#include "posefile/pose_text.h"

#include "dzgzio.h"

#include <QDirIterator>

namespace quillon {

inline DzAppSetup poseTestSetup(const QString& home)
{
    DzAppSetup setup;
    setup.dataFolderPath = home + QLatin1String("/data");
    setup.tempPath = home + QLatin1String("/temp");
    setup.openUrls = false;
    return setup;
}

// A figure that is the primary selection, a read buffer, and a temporary folder that exists.
struct PoseFixture {
    TempFolder home;
    DzApp app;
    FigureFixture rig;
    DzFigure* figure;

    explicit PoseFixture(const QString& name = QLatin1String("Genesis8Female"))
        : app(poseTestSetup(home.path()))
        , rig(name)
        , figure(rig.figure)
    {
        QDir().mkpath(app.getTempPath());
        createReadBuffer();
        clearTouchedBones();
        selectFigure();
    }
    ~PoseFixture()
    {
        freeReadBuffer();
    }
    DzBone* bone(const char* name) const
    {
        return rig.bone(name);
    }
    DzFloatProperty* control(const char* name) const
    {
        return rig.control(name);
    }
    DzTime time() const
    {
        return rig.scene.getTime();
    }
    void selectFigure()
    {
        rig.scene.selectAllNodes(false);
        figure->select(true);
        rig.scene.setPrimarySelection(figure);
    }
    void selectBones(const QStringList& names)
    {
        rig.scene.selectAllNodes(false);
        for (const QString& each : names)
            figure->findBone(each)->select(true);
        rig.scene.setPrimarySelection(figure->findBone(names.first()));
    }
    QString file(const char* name) const
    {
        return home.path(QLatin1String(name));
    }
    // Writes the bytes into a file of this name and gives its path.
    QString fileWith(const char* name, const QByteArray& bytes) const
    {
        writeFile(file(name), bytes);
        return file(name);
    }
    QStringList tempFiles() const
    {
        return filesIn(app.getTempPath());
    }
};

// ---- preset texts

// One entry in the host's layout; url as "/lShin:?rotation/x" or "#pCTRLHipBend:?value".
inline QByteArray entryText(const char* url, const char* keys)
{
    return QByteArray("\t\t\t{\n\t\t\t\t\"url\" : \"name://@selection") + url
        + "/value\",\n\t\t\t\t\"keys\" : " + keys + "\n\t\t\t}";
}

inline QByteArray valueEntry(const char* url, const char* value)
{
    return entryText(url, QByteArray("[ [ 0, ") + value + " ] ]");
}

inline QByteArray presetText(const QList<QByteArray>& entries)
{
    QByteArray text = "{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"asset_info\" : {\n"
                      "\t\t\"type\" : \"preset_pose\"\n\t},\n\t\"scene\" : {\n"
                      "\t\t\"animations\" : [\n";
    for (int i = 0; i < entries.size(); ++i)
        text += entries.at(i) + (i + 1 < entries.size() ? ",\n" : "\n");
    return text + "\t\t]\n\t}\n}\n";
}

inline QByteArray presetOf(const QByteArray& entry)
{
    return presetText(QList<QByteArray>() << entry);
}

inline bool writeGzip(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    DzGzIO gzip(&file);
    if (!gzip.open(QIODevice::WriteOnly))
        return false;
    const bool written = gzip.write(bytes) == bytes.size();
    gzip.close();
    return written;
}

// ---- values that a reader hands on, instead of being set

struct SetCall {
    const DzFloatProperty* channel;
    DzTime time;
    float value;
};

inline std::vector<SetCall>& setCalls()
{
    static std::vector<SetCall> calls;
    return calls;
}

inline void recordCall(DzFloatProperty* channel, DzTime time, float value)
{
    setCalls().push_back(SetCall {channel, time, value});
}

inline QString channelPath(const DzFloatProperty* channel)
{
    const DzBase* owner = qobject_cast<DzBase*>(channel->getOwner());
    return (owner ? owner->getName() : QString()) + QLatin1Char('/') + channel->getName();
}

inline QString callText(const std::vector<SetCall>& calls, size_t i)
{
    return i < calls.size() ? QString("%1 = %2 at %3")
                                  .arg(channelPath(calls[i].channel))
                                  .arg(double(calls[i].value), 0, 'g', 9)
                                  .arg(calls[i].time)
                            : QString("nothing");
}

// Empty when both lists hold the same calls in the same order.
inline QString firstOtherCall(const std::vector<SetCall>& a, const std::vector<SetCall>& b)
{
    const size_t count = std::max(a.size(), b.size());
    for (size_t i = 0; i < count; ++i) {
        if (i >= a.size() || i >= b.size() || a[i].channel != b[i].channel || a[i].time != b[i].time
            || !sameBits(a[i].value, b[i].value))
            return QString("call %1: %2 against %3").arg(i).arg(callText(a, i), callText(b, i));
    }
    return QString();
}

// ---- raw values, by "bone/channel" and control name

typedef std::vector<std::pair<DzFloatProperty*, float>> RawPose;

inline RawPose rawPose(const DzNode* figure)
{
    RawPose pose;
    for (DzFloatProperty* each : poseProperties(figure))
        pose.push_back(std::make_pair(each, each->getRawValue()));
    return pose;
}

inline RawPose finalPose(const DzNode* figure)
{
    RawPose pose;
    for (DzFloatProperty* each : poseProperties(figure))
        pose.push_back(std::make_pair(each, each->getValue()));
    return pose;
}

inline bool isHipTranslation(const DzFloatProperty* channel)
{
    const DzBase* owner = qobject_cast<DzBase*>(channel->getOwner());
    return owner && owner->getName() == QLatin1String("hip")
        && channel->getName().endsWith(QLatin1String("Translate"));
}

// Empty when no value but the hip's translation differs by more than the tolerance.
inline QString firstOtherValue(const RawPose& a, const RawPose& b, double tolerance)
{
    for (size_t i = 0; i < a.size(); ++i) {
        if (!isHipTranslation(a[i].first) && !nearly(a[i].second, b[i].second, tolerance))
            return QString("%1: %2 against %3")
                .arg(channelPath(a[i].first))
                .arg(double(a[i].second), 0, 'g', 9)
                .arg(double(b[i].second), 0, 'g', 9);
    }
    return QString();
}

#define VERIFY_NONE(call)                                                                          \
    do {                                                                                           \
        const QString found = (call);                                                              \
        QVERIFY2(found.isEmpty(), qPrintable(found));                                              \
    } while (false)

inline void clearAllLocks(const DzNode* figure)
{
    for (DzFloatProperty* each : poseProperties(figure))
        each->lock(false);
}

inline void liftEveryLimit(const DzNode* figure)
{
    for (DzFloatProperty* each : poseProperties(figure))
        each->setIsClamped(false);
}

// ---- real files, where they are present

inline QString sharedPoses()
{
    const QByteArray told = qgetenv("QUILLON_SHARED_POSES");
    return told.isEmpty() ? QString(QLatin1String(QUILLON_SOURCE_DIR "/../shared/poses"))
                          : QString::fromLocal8Bit(told);
}

// All presets below the folder, sorted; empty without the folder.
inline QStringList presetsIn(const QString& folder)
{
    QStringList paths;
    QDirIterator walk(
        folder, QStringList() << QLatin1String("*.duf"), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        paths << walk.next();
    paths.sort();
    return paths;
}

} // namespace quillon
