// browse_fixture.h - what tests of browsing share: the Pose Finder ready to browse, pose files that
// are indexed with the signatures they have, and where the figure stands.
#pragma once

#include "finder_fixture.h"

#include "figure/reset_pose.h"
#include "finder/pose_apply.h"
#include "finder/pose_browser.h"
#include "finder/pose_signature.h"
#include "ground/status_message.h"
#include "posefile/pose_reader.h"
#include "posefile/reference_pose.h"

#include "dzmainwindow.h"

#include <initializer_list>

namespace quillon {

inline QList<QByteArray> rotationEntries(const PoseValues& values)
{
    QList<QByteArray> entries;
    for (auto each = values.constBegin(); each != values.constEnd(); ++each) {
        const QByteArray url = "/" + QByteArray(each.key()).replace('/', ":?rotation/");
        entries << valueEntry(
            url.constData(), QByteArray::number(each.value(), 'g', 9).constData());
    }
    return entries;
}

struct BrowseFixture : FinderFixture {
    explicit BrowseFixture(const QString& name = QLatin1String("Genesis8Female"))
        : FinderFixture(name)
    {
        createFilteredList();
        clearStatusMessage();
    }
    ~BrowseFixture()
    {
        freeFilteredList();
    }

    // A pose file below the content folder, in the index with an untouched signature.
    int addFile(const QString& name, const PoseValues& values = PoseValues(),
        quint32 code = kFemaleCode, const QList<QByteArray>& more = QList<QByteArray>())
    {
        const QString path = home.path(QLatin1String("content/") + name);
        writeFile(path, presetText(more + rotationEntries(values)));
        return addEntry(path, quint32(poseCount() + 1), code);
    }

    // The same with the signature that a scan takes: without limits, the figure at rest.
    int addPose(
        const QString& name, const PoseValues& values = PoseValues(), quint32 code = kFemaleCode)
    {
        const int entry = addFile(name, values, code);
        takePose(entry);
        return entry;
    }
    void takePose(int entry) const
    {
        const FigureAtRest other;
        readAndApplyPoseFile(poseEntry(entry)->path, other.figure, time());
        takeSignature(entry, other.figure, time());
    }

    void memorize(const PoseValues& values, const QList<QByteArray>& more = QList<QByteArray>())
    {
        writeFile(referencePosePath(), presetText(more + rotationEntries(values)));
    }

    void addFiles(int count)
    {
        for (int i = 0; i < count; ++i)
            addFile(QString("People/%1.duf").arg(i));
    }
    // One file per word: "A0 B0" is A0.duf in folder A and B0.duf in folder B; "-A0" is left out
    // by the rank filter.
    void addProducts(const QString& words)
    {
        pluginSettings().rankFilter = ShowUnranked;
        for (const QString& word : words.split(QLatin1Char(' '))) {
            const bool hidden = word.startsWith(QLatin1Char('-'));
            const QString title = hidden ? word.mid(1) : word;
            const int entry = addFile(title.left(1) + QLatin1Char('/') + title + ".duf");
            if (hidden)
                hide(entry);
        }
    }
    void hide(int entry)
    {
        const int before = pluginSettings().currentPose;
        pluginSettings().currentPose = entry;
        setCurrentRank(Hidden);
        pluginSettings().currentPose = before;
    }
    QString currentTitle() const
    {
        const PoseIndexEntry* e = poseEntry(position());
        return e ? QFileInfo(e->path).completeBaseName() : QString("none");
    }
    // By a search that begins there; the pose has to match.
    void apply(int entry)
    {
        pluginSettings().currentPose = entry;
        findPose(0, false, false);
        QCOMPARE(position(), entry);
    }

    // Chooses the type as the picker page does, and forgets the undo steps up to there.
    void browse(int type)
    {
        selectPoseType(type);
        rig.undoStack.clearAll();
    }
    bool next()
    {
        return findPose(+1, false, false);
    }
    bool previous()
    {
        return findPose(-1, false, false);
    }
    int position() const
    {
        return pluginSettings().currentPose;
    }
    int steps() const
    {
        return rig.undoStack.getNumUndoItems();
    }
    float rotationDeg(const char* boneName, char axis) const
    {
        const DzBone* b = bone(boneName);
        const DzFloatProperty* channel = axis == 'x' ? b->getXRotControl()
            : axis == 'y'                            ? b->getYRotControl()
                                                     : b->getZRotControl();
        return channel->getValue();
    }
    DzVec3 hipCm_world() const
    {
        return bone("hip")->getWSPos();
    }
    // Where the chest points, seen from above; of a figure that stands or sits.
    double headingDeg() const
    {
        const DzVec3 front = bone("hip")->getWSRot().multVec(DzVec3(0, 0, 1));
        return std::atan2(double(front.m_x), double(front.m_z)) * 180 / kPi;
    }

private:
    // Outside the scene, without limits.
    struct FigureAtRest {
        FigureAtRest()
        {
            QString why;
            figure = loadFigure(QLatin1String("Genesis8Female"), &why);
            if (!figure)
                qFatal("%s", qPrintable(why));
            liftEveryLimit(figure);
        }
        ~FigureAtRest()
        {
            delete figure;
        }
        DzFigure* figure;
    };
};

// The same in a host with a main window, the parent of dialogs and the keeper of panes.
struct WindowedBrowseFixture : BrowseFixture {
    using BrowseFixture::BrowseFixture;

    DzMainWindow window;
};

inline BrowseSession countedMatches()
{
    findPose(0, false, true);
    return browseSession();
}

enum PartLock { LockUpper, LockLower, LockFeet, LockFace, LockLeftHand, LockRightHand };

inline PoseValues values(std::initializer_list<std::pair<const char*, double>> list)
{
    PoseValues map;
    for (const auto& each : list)
        map[each.first] = each.second;
    return map;
}

// Signed difference of two headings, in (-180, 180].
inline double headingBetween(double fromDeg, double toDeg)
{
    return std::remainder(toDeg - fromDeg, 360.0);
}

inline PoseValues sittingValues()
{
    return values({{"lThighBend/x", -90}, {"rThighBend/x", -90}, {"lThighBend/z", 10},
        {"rThighBend/z", -10}, {"lShin/x", 90}, {"rShin/x", 90}});
}

// Locks of all pose channels, as one text that tells which.
inline QStringList lockedChannels(const DzNode* figure)
{
    QStringList locked;
    for (const DzFloatProperty* each : poseProperties(figure)) {
        if (each->isLocked())
            locked << channelPath(each);
    }
    return locked;
}

} // namespace quillon
