#include "browse_fixture.h"

#include "finder/custom_pose_commands.h"
#include "finder/pose_identify.h"
#include "posefile/custom_library.h"

#include "dzmainwindow.h"
#include "dzpane.h"
#include "dzpanemgr.h"

#include <QFileDialog>
#include <QLineEdit>

using namespace quillon;

// Scripts find the content library by this name.
class DzContentLibraryPane : public DzPane {
    Q_OBJECT
public:
    DzContentLibraryPane()
        : DzPane(QLatin1String("Content Library"))
    {
    }
    Q_INVOKABLE void browseToNativeFolder(const QString& folder)
    {
        folders << folder;
    }
    QStringList folders;
};

// While it lives, file dialogs are noted and given this name; without one they are cancelled.
class FileAnswer : public QObject {
    Q_OBJECT
public:
    explicit FileAnswer(const QString& name)
        : m_name(name)
    {
        qApp->installEventFilter(this);
    }
    int dialogs = 0;
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
        if (m_name.isEmpty()) {
            m_dialog->reject();
            return;
        }
        m_dialog->findChild<QLineEdit*>(QLatin1String("fileNameEdit"))->setText(m_name);
        QMetaObject::invokeMethod(m_dialog, "accept");
        if (m_dialog->isVisible())
            m_dialog->reject(); // the name was refused
    }

private:
    QString m_name;
    QPointer<QFileDialog> m_dialog;
};

class TestCustomPoseCommands : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<BrowseFixture> m_finder;
    std::unique_ptr<DzMainWindow> m_window;

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
    int addCustom(const QString& name)
    {
        const QString path = customLibraryFolder() + name;
        writeFile(path, presetText(QList<QByteArray>()));
        return addEntry(path, quint32(poseCount() + 1));
    }

private slots:
    void init()
    {
        m_finder.reset(new BrowseFixture);
        m_window.reset(new DzMainWindow);
    }
    void cleanup()
    {
        m_window.reset();
        m_finder.reset();
    }

    // ---- saving ------------------------------------------------------------------------------

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

    void nameWithoutExtensionGetsOne()
    {
        save("x");
        QCOMPARE(filesIn(customLibraryFolder()), QStringList("x.duf"));
        QCOMPARE(indexedPaths(), QStringList(customLibraryFolder() + "x.duf"));
        save("x"); // the same file again
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
        save("x");
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
        m_window.reset();
        m_finder.reset();
        m_finder.reset(new BrowseFixture(figure));
        m_window.reset(new DzMainWindow);
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

    // ---- deleting ----------------------------------------------------------------------------

    void customPoseIsDeletedOnYes_data()
    {
        QTest::addColumn<bool>("yes");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }
    void customPoseIsDeletedOnYes()
    {
        QFETCH(bool, yes);
        addCustom("a.duf");
        addCustom("sit down.duf");
        const QString path = poseEntry(1)->path;
        const BoxAnswers boxes(yes ? QMessageBox::Yes : QMessageBox::No);
        QCOMPARE(deleteCustomPose(1), yes);
        QCOMPARE(boxes.boxes.size(), 1);
        const SeenBox& box = boxes.boxes.first();
        QCOMPARE(box.title, QString("Quillon - Delete Custom Pose"));
        QCOMPARE(
            box.text, QString("Pose named 'sit down' will be permanently deleted. Are you sure?"));
        QVERIFY(!box.parent);
        QCOMPARE(QFile::exists(path), !yes);
        QCOMPARE(poseCount(), yes ? 1 : 2);
        createPoseIndex();
        QCOMPARE(readPoseIndex(), yes);
        QCOMPARE(poseCount(), yes ? 1 : 0);
    }

    void deletedPoseLeavesThePosition_data()
    {
        QTest::addColumn<int>("deleted");
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("expected");
        QTest::newRow("the first of three") << 0 << 0 << 0;
        QTest::newRow("the second of three") << 1 << 1 << 1;
        QTest::newRow("the last of three") << 2 << 2 << 0;
        QTest::newRow("one before the position") << 0 << 2 << 1;
        QTest::newRow("none applied") << 1 << -1 << -1;
    }
    void deletedPoseLeavesThePosition()
    {
        QFETCH(int, deleted);
        QFETCH(int, position);
        for (const char* name : {"a.duf", "b.duf", "c.duf"})
            addCustom(name);
        pluginSettings().currentPose = position;
        const BoxAnswers boxes(QMessageBox::Yes);
        QVERIFY(deleteCustomPose(deleted));
        QTEST(m_finder->position(), "expected");
    }

    void lastPoseThatIsDeletedLeavesNone()
    {
        addCustom("a.duf");
        pluginSettings().currentPose = 0;
        const BoxAnswers boxes(QMessageBox::Yes);
        QVERIFY(deleteCustomPose(0));
        QCOMPARE(m_finder->position(), -1);
    }

    void undeletableFileKeepsItsEntry()
    {
        const int entry = addCustom("a.duf");
        QFile::remove(poseEntry(entry)->path);
        QDir().mkpath(poseEntry(entry)->path); // a folder, which no file deletion takes
        const BoxAnswers boxes(QMessageBox::Yes);
        QVERIFY(deleteCustomPose(entry));
        QCOMPARE(poseCount(), 1);
        QVERIFY(!QFile::exists(dataFiles().poseIndex));
    }

    void onlyCustomPosesAreDeleted()
    {
        m_finder->addFile("People/a.duf");
        const BoxAnswers boxes(QMessageBox::Yes);
        for (int entry : {-1, 0, 1})
            QVERIFY(!deleteCustomPose(entry));
        QVERIFY(boxes.boxes.isEmpty());
        QCOMPARE(poseCount(), 1);
    }

    // ---- the folder --------------------------------------------------------------------------

    void browsesToTheFolderOfThePose_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QStringList>("folders");
        QTest::newRow("a pose") << "C:/Content/People/Poses/sit.duf"
                                << QStringList("C:/Content/People/Poses");
        QTest::newRow("no folder") << "sit.duf" << QStringList();
        QTest::newRow("an unknown product of the maker's")
            << "/c/data/Brannoc/poses/099/003f.duf" << QStringList("/c/data/Brannoc/poses/099");
    }
    void browsesToTheFolderOfThePose()
    {
        QFETCH(QString, path);
        DzContentLibraryPane* const library = new DzContentLibraryPane;
        m_window->getPaneMgr()->addPane(library);
        browseToPoseFolder(path);
        QTEST(library->folders, "folders");
        QVERIFY(library->getPaneGroup()); // it is shown
    }

    void posePairProductsHaveAFolderOfTheirOwn_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("folder");
        QTest::newRow("a pair") << "012f0.duf"
                                << "Genesis 8 Female";
        QTest::newRow("a pair, the man") << "012m0.duf"
                                         << "Genesis 8 Male";
        QTest::newRow("no pair") << "012f.duf"
                                 << "Genesis 8 Female";
    }
    void posePairProductsHaveAFolderOfTheirOwn()
    {
        QFETCH(QString, file);
        QFETCH(QString, folder);
        DzContentLibraryPane* const library = new DzContentLibraryPane;
        m_window->getPaneMgr()->addPane(library);
        browseToPoseFolder(QLatin1String("/c/data/Brannoc/poses/001/") + file);
        QCOMPARE(library->folders.size(), 1);
        const QString start = "/c/People/" + folder + "/Poses/Brannoc/";
        QVERIFY2(library->folders.first().startsWith(start), qPrintable(library->folders.first()));
        QCOMPARE(library->folders.first().count(QLatin1Char('/')), start.count(QLatin1Char('/')));
        QVERIFY(library->folders.first().size() > start.size());
    }

    void hostWithoutAContentLibraryIsLeftAlone()
    {
        browseToPoseFolder("C:/Content/People/Poses/sit.duf");
        QCOMPARE(m_window->getPaneMgr()->getNumPanes(), 0);
    }
};

QTEST_MAIN(TestCustomPoseCommands)
#include "test_custom_pose_commands.moc"
