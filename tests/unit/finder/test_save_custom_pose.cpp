#include "browse_fixture.h"
#include "full_pipe.h"
#include "room_tests.h"

#include "finder/custom_pose_commands.h"
#include "finder/pose_identify.h"
#include "posefile/custom_library.h"

#include "dzhostcalls.h"

#include <QFileDialog>
#include <QLineEdit>

using namespace quillon;

// While it lives, file dialogs are noted. The first is given this name, without one it is
// cancelled; further ones are accepted with the name that they propose.
class FileAnswer : public QObject {
    Q_OBJECT
public:
    explicit FileAnswer(const QString& name)
        : m_name(name)
    {
        qApp->installEventFilter(this);
    }
    int dialogs = 0;
    QStringList proposed; // file names
    QString folder;
    QStringList filters;
    bool saves = false;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        QFileDialog* dialog = qobject_cast<QFileDialog*>(watched);
        if (dialog && event->type() == QEvent::Show) {
            m_dialog = dialog;
            QMetaObject::invokeMethod(this, "answer", Qt::QueuedConnection);
        }
        return false;
    }

private slots:
    void answer()
    {
        ++dialogs;
        folder = m_dialog->directory().path();
        filters = m_dialog->nameFilters();
        saves = m_dialog->acceptMode() == QFileDialog::AcceptSave;
        QLineEdit* edit = m_dialog->findChild<QLineEdit*>(QLatin1String("fileNameEdit"));
        proposed << edit->text();
        if (m_name.isEmpty()) {
            m_dialog->reject();
            return;
        }
        if (dialogs == 1)
            edit->setText(m_name);
        QMetaObject::invokeMethod(m_dialog, "accept");
        if (m_dialog->isVisible())
            m_dialog->reject(); // the name was refused
    }

private:
    QString m_name;
    QPointer<QFileDialog> m_dialog;
};

static int g_gzipFiles;

// The first is the one that is written. A file that is no gzip file is read as it is.
static bool failSecondGzipFile(const char* call, const void*)
{
    return qstrcmp(call, "gzOpen") == 0 && ++g_gzipFiles > 1;
}

class TestSaveCustomPose : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<WindowedBrowseFixture> m_finder;

    // A pose of the whole body, so that it is recognised; and not at rest.
    void poseTheFigure()
    {
        m_finder->bone("lShin")->getXRotControl()->setValue(50);
        m_finder->bone("hip")->getXRotControl()->setValue(-90);
    }
    QString save(const QString& name)
    {
        const QString path = QDir::isAbsolutePath(name) ? name : customLibraryFolder() + name;
        const FileAnswer answer(path);
        const BoxAnswers boxes(QMessageBox::Yes); // a dialog may ask before it replaces a file
        saveCustomPose();
        return path;
    }

private slots:
    void init()
    {
        m_finder.reset(new WindowedBrowseFixture);
    }
    void cleanup()
    {
        m_finder.reset();
    }

    void savedPoseIsIndexedWithItsSignature()
    {
        poseTheFigure();
        const FigureState before = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        const QString path = save("sit.duf");
        QCOMPARE(indexedPaths(), QStringList(path));
        QVERIFY(isCustomPose(0));
        const PoseIndexEntry& e = *poseEntry(0);
        QCOMPARE(e.figureCode, kFemaleCode);
        QVERIFY(e.contentHash != 0 && e.hasSignature);
        QVERIFY(angleDeg(e.signature[HipSlot], turn(1, 0, 0, -90)) < 1e-3);
        QVERIFY(angleDeg(e.signature[LeftShinSlot], DzQuat()) > 45);
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
        QCOMPARE(m_finder->steps(), 0);
        createPoseIndex();
        QVERIFY(readPoseIndex());
        QCOMPARE(indexedPaths(), QStringList(path));
    }

    // What was written is known, whether it can be read back or not.
    void aSavedPoseIsIdentifiedThoughItCannotBeReadBack()
    {
        poseTheFigure();
        const QString path = save("sit.duf");
        const PoseIndexEntry readBack = *poseEntry(0);
        removeEntry(0);
        dzHostCallHook = failSecondGzipFile;
        g_gzipFiles = 0;
        save("sit.duf");
        dzHostCallHook = nullptr;
        QCOMPARE(indexedPaths(), QStringList(path));
        QCOMPARE(poseEntry(0)->figureCode, kFemaleCode);
        QCOMPARE(poseEntry(0)->contentHash, readBack.contentHash);
        QVERIFY(poseEntry(0)->hasSignature);
        identifyPose(0); // as a scan would
        QCOMPARE(poseEntry(0)->contentHash, readBack.contentHash);
        QCOMPARE(poseEntry(0)->figureCode, kFemaleCode);
    }

    void savedPoseIsTheFiguresOwn()
    {
        poseTheFigure();
        const RawPose posed = rawPose(m_finder->figure);
        const QString path = save("sit.duf");
        QVERIFY(fileBytes(path).startsWith("\x1f\x8b")); // gzip
        resetPose(m_finder->figure, ResetWholeFigure);
        QVERIFY(applyPoseFile(path, true));
        VERIFY_NONE(firstOtherValue(posed, rawPose(m_finder->figure), 5e-5));
    }

    void dialogOpensInTheLibrary()
    {
        const FileAnswer answer((QString()));
        saveCustomPose();
        QCOMPARE(answer.dialogs, 1);
        QVERIFY(answer.saves);
        QCOMPARE(answer.folder + QLatin1Char('/'), customLibraryFolder());
        QCOMPARE(answer.filters, QStringList("Custom Pose Library Files (*.duf)"));
    }

    void cancelledDialogSavesNothing()
    {
        const FileAnswer answer((QString()));
        saveCustomPose();
        QCOMPARE(poseCount(), 0);
        QVERIFY(filesIn(customLibraryFolder()).isEmpty());
        QVERIFY(!QFile::exists(dataFiles().poseIndex));
    }

    void aPipeAtTheChosenNameIsNotWritten()
    {
        const FullPipe pipe(customLibraryFolder() + "x.duf");
        save("x.duf");
        QVERIFY(pipe.isUntouched());
        QCOMPARE(poseCount(), 0);
    }

    void nameWithoutExtensionGetsOne()
    {
        save("x");
        QCOMPARE(filesIn(customLibraryFolder()), QStringList("x.duf"));
        QCOMPARE(indexedPaths(), QStringList(customLibraryFolder() + "x.duf"));
        save("x"); // the same file again
        QCOMPARE(poseCount(), 1);
    }

    // The dialog's own question is about the whole name, whichever name was typed.
    void noFileIsReplacedUnasked_data()
    {
        QTest::addColumn<QString>("existing");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("proposed");
        QTest::addColumn<int>("questions");
        const struct {
            const char *what, *existing, *typed, *proposedAgain;
            int questions;
        } rows[] = {
            {"the suffix leads to a file", "two.duf", "two", "two.duf", 1},
            {"a full stop in the name", "walk 1.5.duf", "walk 1.5", "walk 1.5.duf", 1},
            {"the whole name", "two.duf", "two.duf", "", 1},
            {"the whole name in capitals", "TWO.DUF", "TWO.DUF", "", 1},
            {"another file in capitals", "two.duf", "TWO.DUF", "", 0},
            {"the suffix leads to no file", "two.duf", "three", "", 0},
        };
        for (const auto& row : rows) {
            QStringList proposed = QStringList() << QString();
            if (*row.proposedAgain)
                proposed << row.proposedAgain;
            QTest::newRow(row.what) << row.existing << row.typed << proposed << row.questions;
        }
    }
    void noFileIsReplacedUnasked()
    {
        QFETCH(QString, existing);
        QFETCH(QString, typed);
        QFETCH(int, questions);
        const QString path = customLibraryFolder() + existing;
        writeFile(path, "old");
        for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
            const bool kept = answer == QMessageBox::No || questions == 0;
            const FileAnswer file(customLibraryFolder() + typed);
            const BoxAnswers boxes(answer);
            saveCustomPose();
            QTEST(file.proposed, "proposed");
            QCOMPARE(boxes.boxes.size(), questions);
            QCOMPARE(fileBytes(path) == "old", kept);
            if (questions == 0)
                break; // what was new is there now
            QVERIFY(boxes.boxes.first().text.contains(existing));
            QCOMPARE(indexedPaths(), kept ? QStringList() : QStringList(path));
        }
        QCOMPARE(poseCount(), 1);
    }

    void savingUnderAnIndexedNameRefillsTheEntry()
    {
        save("a.duf");
        save("b.duf");
        const PoseIndexEntry old = *poseEntry(0);
        poseTheFigure();
        save("a.duf");
        QCOMPARE(poseCount(), 2);
        QCOMPARE(poseEntry(0)->path, old.path);
        QVERIFY(poseEntry(0)->contentHash != old.contentHash);
        QVERIFY(angleDeg(poseEntry(0)->signature[LeftShinSlot], old.signature[LeftShinSlot]) > 45);
        createPoseIndex();
        QVERIFY(readPoseIndex());
        QCOMPARE(poseCount(), 2);
    }

    // As the index on disk, which has one entry a path.
    void savingAgainAfterTheFileVanishedRefillsTheEntry()
    {
        const QString path = save("a.duf");
        save("b.duf");
        const PoseIndexEntry old = *poseEntry(0);
        QVERIFY(QFile::remove(path));
        poseTheFigure();
        save("a.duf");
        QCOMPARE(indexedPaths(), QStringList() << path << customLibraryFolder() + "b.duf");
        QVERIFY(poseEntry(0)->contentHash != old.contentHash);
        QVERIFY(angleDeg(poseEntry(0)->signature[LeftShinSlot], old.signature[LeftShinSlot]) > 45);
        createPoseIndex();
        QVERIFY(readPoseIndex());
        QCOMPARE(poseCount(), 2);
    }

    // A link to itself is one.
    void aNameOfWhichNothingCanBeToldIsAskedAboutInFull()
    {
        const QString path = customLibraryFolder() + "two.duf";
        QVERIFY(QDir().mkpath(customLibraryFolder()) && QFile::link(path, path));
        const FileAnswer answer(customLibraryFolder() + "two");
        const BoxAnswers boxes(QMessageBox::Yes);
        saveCustomPose();
        QCOMPARE(answer.proposed, QStringList() << QString() << "two.duf");
    }

    void savingOverAFileThatIsNotIndexedAddsAnEntry()
    {
        writeFile(customLibraryFolder() + "a.duf", "old");
        save("a.duf");
        QCOMPARE(poseCount(), 1);
    }

    void fullIndexTakesNoMore()
    {
        for (int i = 0; i < kPoseIndexCapacity; ++i)
            appendPose(QString::number(i));
        const QString path = save("a.duf");
        QVERIFY(QFile::exists(path));
        QCOMPARE(poseCount(), kPoseIndexCapacity);
        QVERIFY(!QFile::exists(dataFiles().poseIndex));
        QCOMPARE(poseEntry(kPoseIndexCapacity - 1)->path, QString::number(kPoseIndexCapacity - 1));
    }

    void fullIndexStillRefills()
    {
        save("a.duf");
        while (appendPose("filler") >= 0) { }
        const quint32 hash = poseEntry(0)->contentHash;
        poseTheFigure();
        save("a.duf");
        QVERIFY(poseEntry(0)->contentHash != hash);
        QVERIFY(QFile::exists(dataFiles().poseIndex));
    }

    void poseSavedElsewhereIsNoCustomPose()
    {
        QDir().mkpath(m_finder->file("elsewhere"));
        save(m_finder->file("elsewhere/a.duf"));
        QCOMPARE(poseCount(), 1);
        QVERIFY(!isCustomPose(0));
        QVERIFY(!deleteCustomPose(0));
        QCOMPARE(poseCount(), 1);
    }

    void failedWriteIndexesNothing()
    {
        QDir().mkpath(customLibraryFolder() + "x.duf"); // a folder in the file's place
        const FileAnswer answer(customLibraryFolder() + "x");
        QVERIFY(!savePoseOf(m_finder->figure, m_finder->time()));
        QCOMPARE(answer.dialogs, 1); // a folder is no file to ask about
        QCOMPARE(poseCount(), 0);
        QVERIFY(!QFile::exists(dataFiles().poseIndex));
    }

    void fileTellsTheSex_data()
    {
        QTest::addColumn<QString>("figure");
        QTest::addColumn<QByteArray>("id");
        QTest::newRow("Genesis8Female") << "Genesis8Female" << QByteArray("\"G8F\"");
        QTest::newRow("Genesis8Male") << "Genesis8Male" << QByteArray("\"G8M\"");
        QTest::newRow("Genesis8_1Female") << "Genesis8_1Female" << QByteArray("\"G8F\"");
        QTest::newRow("Genesis8_1Male") << "Genesis8_1Male" << QByteArray("\"G8M\"");
    }
    void fileTellsTheSex()
    {
        QFETCH(QString, figure);
        QFETCH(QByteArray, id);
        m_finder.reset();
        m_finder.reset(new WindowedBrowseFixture(figure));
        const QString path = save("a.duf");
        QFile file(path);
        DzGzIO gzip(&file);
        QVERIFY(gzip.open(QIODevice::ReadOnly));
        QVERIFY(gzip.readAll().contains(id));
    }

    void savingNeedsAFigure()
    {
        m_finder->rig.scene.selectAllNodes(false);
        const FileAnswer answer((QString()));
        const BoxAnswers boxes;
        saveCustomPose();
        QCOMPARE(boxes.boxes.size(), 1);
        QCOMPARE(boxes.boxes.first().text, QString("Please select a Genesis 8 figure first."));
        QCOMPARE(answer.dialogs, 0);
        QVERIFY(!QDir(customLibraryFolder()).exists());
    }

    void aFigureOnAPropIsSaved()
    {
        auto* prop = new DzNode(QLatin1String("swing"));
        m_finder->rig.scene.addNode(prop);
        prop->addNodeChild(m_finder->figure);
        QVERIFY(QFile::exists(save("a.duf")));
        QCOMPARE(poseCount(), 1);
    }

    void savingNeedsTheLibraryFolder()
    {
        writeFile(m_finder->file("data"), "a file in the folder's place");
        const FileAnswer answer((QString()));
        const BoxAnswers boxes;
        saveCustomPose();
        QCOMPARE(boxes.boxes.size(), 1);
        QCOMPARE(boxes.boxes.first().title, QString("Error"));
        QCOMPARE(boxes.boxes.first().text, QString("Could not find Custom Pose Library folder."));
        QCOMPARE(answer.dialogs, 0);
    }

    void rankFollowsAReplacedFile()
    {
        QDir().mkpath(m_finder->file("elsewhere"));
        save(m_finder->file("elsewhere/a.duf"));
        pluginSettings().currentPose = 0;
        setCurrentRank(Favorite);
        poseTheFigure();
        save(m_finder->file("elsewhere/a.duf")); // other bytes, so another pose
        QCOMPARE(pluginSettings().currentRank, qint32(Unranked));
    }
};

QUILLON_TEST(TestSaveCustomPose)
#include "test_save_custom_pose.moc"
