#include "full_pipe.h"
#include "pose_fixture.h"
#include "room_tests.h"

#include "ground/data_folder.h"
#include "ground/status_message.h"
#include "posefile/reference_pose.h"

using namespace quillon;

class TestReferencePose : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PoseFixture> m_rig;

    DzFloatProperty* elbow() const
    {
        return m_rig->bone("lForearmBend")->getYRotControl();
    }
    int steps() const
    {
        return m_rig->rig.undoStack.getNumUndoItems();
    }
    static QByteArray unpacked(const QString& path)
    {
        QFile file(path);
        DzGzIO gzip(&file);
        return gzip.open(QIODevice::ReadOnly) ? gzip.readAll() : QByteArray();
    }

private slots:
    void init()
    {
        m_rig.reset(new PoseFixture);
        locateDataFiles();
        clearStatusMessage();
    }
    void cleanup()
    {
        m_rig.reset();
        locateDataFiles();
    }

    // ---- the file ----------------------------------------------------------------------------

    void liesInTheDataFolder()
    {
        QCOMPARE(referencePosePath(), dataFiles().folder + QLatin1String("reference.duf"));
    }

    void hasNoPathWithoutADataFolder()
    {
        m_rig.reset();
        locateDataFiles();
        QVERIFY(referencePosePath().isEmpty());
    }

    // ---- memorizing --------------------------------------------------------------------------

    void firstPoseIsMemorizedWithoutAQuestion()
    {
        elbow()->setValue(-40);
        m_rig->rig.undoStack.clearAll();
        const BoxAnswers boxes(QMessageBox::No);
        memorizeReferencePose();
        QVERIFY(boxes.boxes.isEmpty());
        QCOMPARE(statusMessage(), QString("\r\n\r\nReference Pose memorized\r\n\r\n"));
        QVERIFY(isStatusMessageShown());
        QCOMPARE(steps(), 0);
        QVERIFY(fileBytes(referencePosePath()).startsWith("\x1f\x8b")); // gzip
        const QByteArray text = unpacked(referencePosePath());
        QVERIFY(text.contains("lForearmBend:?rotation/y/value") && text.contains("\"G8F\""));
    }

    void aPipeAtItsNameIsNeitherWrittenNorRead()
    {
        const FullPipe pipe(referencePosePath(), presetOf(valueEntry("/lShin:?rotation/x", "5")));
        const BoxAnswers boxes(QMessageBox::Yes);
        memorizeReferencePose();
        QVERIFY(pipe.isUntouched());
        elbow()->setValue(-40);
        showReferencePose();
        QVERIFY(pipe.isUntouched());
        QCOMPARE(elbow()->getValue(), -40.f);
    }

    void memorizedPoseIsReplacedOnlyOnYes_data()
    {
        QTest::addColumn<bool>("yes");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }
    void memorizedPoseIsReplacedOnlyOnYes()
    {
        QFETCH(bool, yes);
        elbow()->setValue(-40);
        memorizeReferencePose();
        const QByteArray first = fileBytes(referencePosePath());
        elbow()->setValue(-10);
        clearStatusMessage();
        const BoxAnswers boxes(yes ? QMessageBox::Yes : QMessageBox::No);
        memorizeReferencePose();
        QCOMPARE(boxes.boxes.size(), 1);
        const SeenBox& box = boxes.boxes.first();
        QCOMPARE(box.title, QString("Quillon"));
        QCOMPARE(box.text,
            QString("There is already a memorized reference pose. Do you want to replace it with "
                    "the currently selected figure pose?"));
        QVERIFY(!box.parent);
        QCOMPARE(fileBytes(referencePosePath()) != first, yes);
        QCOMPARE(isStatusMessageShown(), yes);
    }

    void failedWriteIsNoSuccess()
    {
        writeFile(m_rig->file("data"), "a file in the folder's place");
        const BoxAnswers boxes;
        QVERIFY(!memorizeReferenceOf(m_rig->figure, m_rig->time()));
        QVERIFY(boxes.boxes.isEmpty());
        QVERIFY(!QFile::exists(referencePosePath()));
        QCOMPARE(statusMessage(), QString());
    }

    // ---- showing -----------------------------------------------------------------------------

    void shownPoseIsTheMemorizedOne()
    {
        Random random(4);
        poseAtRandom(&random, m_rig->figure);
        const RawPose memorized = rawPose(m_rig->figure);
        memorizeReferencePose();
        poseAtRandom(&random, m_rig->figure);
        showReferencePose();
        // a file holds 7 significant digits
        VERIFY_NONE(firstOtherValue(memorized, rawPose(m_rig->figure), 5e-5));
        QCOMPARE(statusMessage(),
            QString("\r\nReference Pose shown\r\nUse 'undo' revert\r\nto current pose\r\n"));
    }

    void undoBringsThePoseBackInOneStep()
    {
        elbow()->setValue(-40);
        memorizeReferencePose();
        Random random(6);
        poseAtRandom(&random, m_rig->figure);
        const FigureState before = stateOf(m_rig->figure);
        m_rig->rig.undoStack.clearAll();
        showReferencePose();
        QCOMPARE(elbow()->getRawValue(), -40.f);
        QCOMPARE(steps(), 1);
        QCOMPARE(m_rig->rig.undoStack.getUndoCaption(), QString("quillon_stack"));
        m_rig->rig.undoStack.undo();
        VERIFY_SAME_STATE(before, stateOf(m_rig->figure));
    }

    void shownPoseLeavesTheHipWhereItIs()
    {
        memorizeReferencePose();
        m_rig->figure->setWSPos(DzVec3(30, 0, -40));
        m_rig->figure->getYRotControl()->setValue(70);
        m_rig->bone("hip")->setLocalPos(m_rig->time(), DzVec3(1, 12, -3));
        const DzVec3 beforeCm_world = m_rig->bone("hip")->getWSPos();
        showReferencePose();
        QVERIFY(distance(m_rig->bone("hip")->getWSPos(), beforeCm_world) < 1e-4);
    }

    void nothingMemorizedIsAnEmptyStep_data()
    {
        QTest::addColumn<bool>("folder");
        QTest::newRow("no file") << false;
        QTest::newRow("a folder in its place") << true;
    }
    void nothingMemorizedIsAnEmptyStep()
    {
        QFETCH(bool, folder);
        if (folder)
            QDir().mkpath(referencePosePath());
        Random random(8);
        poseAtRandom(&random, m_rig->figure);
        const FigureState before = stateOf(m_rig->figure);
        m_rig->rig.undoStack.clearAll();
        showReferencePose();
        VERIFY_SAME_STATE(before, stateOf(m_rig->figure));
        QCOMPARE(steps(), 1);
        QVERIFY(isStatusMessageShown());
    }

    void figureWithoutHipShowsNothing()
    {
        memorizeReferencePose();
        clearStatusMessage();
        m_rig->figure->removeBone(m_rig->bone("hip"));
        m_rig->rig.undoStack.clearAll();
        showReferencePose();
        QCOMPARE(steps(), 0);
        QVERIFY(!isStatusMessageShown());
    }

    void nothingSelectedShowsNothing()
    {
        memorizeReferencePose();
        clearStatusMessage();
        m_rig->rig.scene.selectAllNodes(false);
        m_rig->rig.undoStack.clearAll();
        showReferencePose();
        QCOMPARE(steps(), 0);
        QVERIFY(!isStatusMessageShown());
    }
};

QUILLON_TEST(TestReferencePose)
#include "test_reference_pose.moc"
