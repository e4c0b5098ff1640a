// The progress of a patch: what it shows, and what a cancel stops, at every time.
#include "frame_fixture.h"
#include "room_tests.h"
#include "qt_test_compat.h"

#include "ground/status_message.h"
#include "services/patch_table.h"
#include "services/product_patcher.h"

#include "dzcontentmgr.h"
#include "dzprogresswatch.h"

#include <QtTest>

#include <utility>

using namespace quillon;

class TestPatchProgress : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theProgressGoesByScripts();
    void aSingleTargetGoesToAHundred();
    void itFinishesWithNothingInstalled();
    void thePaneIsBusyMeanwhile();

    void aCancelStopsAfterTheCurrentScript();
    void aCancelAtTheEndOfAProductEndsTheWholePatch();
    void aCancelBeforeAnyInstalledScriptMeansFalse();
    void aCancelBeforeTheSearchWritesNothing();
    void aCancelDuringTheSearchEndsItAndWritesNothing();

private:
    QString installed(const QString& name)
    {
        writeFile(content->path(name), "old");
        return content->path(name);
    }
    std::unique_ptr<HostFixture> host;
    std::unique_ptr<TempFolder> content;
};

static QList<DzProgressRecord> g_records;
static int g_cancelAfterSteps; // -1: never
static bool g_busyThroughout;

static bool watchProgress(const DzProgressRecord& record)
{
    g_records += record;
    g_busyThroughout &= isBusy();
    return g_cancelAfterSteps >= 0 && record.calls >= g_cancelAfterSteps;
}

static QByteArray bytesOf(PatchScript script)
{
    const ScriptBlock& block = scriptBlock(script);
    return QByteArray(block.bytes, block.length);
}

void TestPatchProgress::init()
{
    host.reset(new HostFixture);
    content.reset(new TempFolder);
    dzApp->getContentMgr()->setContentDirectories(QStringList(content->path()));
    g_records.clear();
    g_cancelAfterSteps = -1;
    g_busyThroughout = true;
    dzProgressHook = watchProgress;
}

void TestPatchProgress::cleanup()
{
    dzProgressHook = nullptr;
    host.reset();
}

void TestPatchProgress::theProgressGoesByScripts()
{
    patchProducts();
    QCOMPARE(g_records.first().title, QString("Updating..."));
    QCOMPARE(g_records.first().total, 100);
    QVERIFY(g_records.first().cancellable);
    QList<int> positions; // of the updates, in order
    QStringList infos;
    for (const DzProgressRecord& record : std::as_const(g_records))
        if (record.event == DzProgressRecord::Changed && record.calls > positions.size()) {
            positions += record.position;
            infos += record.info;
        }
    QList<int> expected;
    QStringList names;
    for (const PatchRow& row : kPatchRows)
        for (int i = 0; i < row.scripts; ++i) {
            expected += row.scripts > 1 ? i * 100 / (row.scripts - 1) : 100;
            names += scriptName(row, i);
        }
    QCOMPARE(positions, expected);
    QCOMPARE(infos.size(), names.size());
    for (int i = 0; i < infos.size(); ++i)
        QCOMPARE(infos.at(i), "Updating " + names.at(i));
}

void TestPatchProgress::aSingleTargetGoesToAHundred()
{
    patchProducts();
    QCOMPARE(g_records.last().position, 100);
    QVERIFY(g_records.last().info.contains("Align Camera.dse"));
}

void TestPatchProgress::aCancelStopsAfterTheCurrentScript()
{
    const QString first = installed(scriptName(kPatchRows[0], 0));
    const QString next = installed(scriptName(kPatchRows[0], 1));
    const QString later = installed(scriptName(kPatchRows[1], 0));
    g_cancelAfterSteps = 1;
    QVERIFY(patchProducts()); // one was written
    QCOMPARE(fileBytes(first), bytesOf(kPatchRows[0].own));
    QCOMPARE(fileBytes(next), QByteArray("old"));
    QCOMPARE(fileBytes(later), QByteArray("old"));
    QCOMPARE(g_records.last().event, DzProgressRecord::Finished);
}

void TestPatchProgress::aCancelBeforeAnyInstalledScriptMeansFalse()
{
    const QString later = installed(scriptName(kPatchRows[0], 20));
    g_cancelAfterSteps = 3;
    QVERIFY(!patchProducts());
    QCOMPARE(fileBytes(later), QByteArray("old"));
    QCOMPARE(g_records.last().calls, 3);
}

void TestPatchProgress::thePaneIsBusyMeanwhile()
{
    QVERIFY(!isBusy());
    patchProducts();
    QVERIFY(g_busyThroughout);
    QVERIFY(!isBusy());
}

void TestPatchProgress::itFinishesWithNothingInstalled()
{
    QVERIFY(!patchProducts());
    QCOMPARE(g_records.last().event, DzProgressRecord::Finished);
    QVERIFY(!g_records.last().cancelled);
}

void TestPatchProgress::aCancelAtTheEndOfAProductEndsTheWholePatch()
{
    const QString later = installed(scriptName(kPatchRows[1], 0));
    g_cancelAfterSteps = kPatchRows[0].scripts;
    QVERIFY(!patchProducts());
    QCOMPARE(fileBytes(later), QByteArray("old"));
    QCOMPARE(g_records.last().calls, kPatchRows[0].scripts);
}

void TestPatchProgress::aCancelBeforeTheSearchWritesNothing()
{
    const QString first = installed(scriptName(kPatchRows[0], 0));
    g_cancelAfterSteps = 0;
    QVERIFY(!patchProducts());
    QCOMPARE(fileBytes(first), QByteArray("old"));
    QCOMPARE(g_records.last().calls, 0);
    QCOMPARE(g_records.last().event, DzProgressRecord::Finished);
}

static void pressCancel()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        if (window->objectName() == "DzProgressWindow" && window->isVisible())
            window->findChild<QPushButton*>()->click();
}

// Events are handled at every folder of the search.
void TestPatchProgress::aCancelDuringTheSearchEndsItAndWritesNothing()
{
    const QString first = installed(scriptName(kPatchRows[0], 0));
    for (int i = 0; i < 200; ++i)
        QDir().mkpath(content->path(QString("folder %1").arg(i)));
    int turns = 0;
    const EveryTurn presser([&turns] {
        if (++turns == 20)
            pressCancel();
    });
    QVERIFY(!patchProducts());
    QVERIFY2(turns >= 20 && turns < 50, qPrintable(QString::number(turns)));
    QCOMPARE(fileBytes(first), QByteArray("old"));
    QCOMPARE(g_records.last().calls, 0);
    QVERIFY(g_records.last().cancelled);
}

QUILLON_TEST(TestPatchProgress)
#include "test_patch_progress.moc"
