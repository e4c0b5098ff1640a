// How soon a scan ends: what it still looks at after Cancel was pressed, by number and not by the
// clock; and of which entries the progress window is told.
#include "room_tests.h"
#include "scan_fixture.h"

#include "finder/content_walk.h"
#include "finder/scan_phases.h"

#include "dzhostcalls.h"

using namespace quillon;

class TestScanCancel : public QObject {
    Q_OBJECT
private slots:
    // the walk
    void theWalkAsksAfterEveryFileAndFolder();
    void theWalkEndsAtOnce_data();
    void theWalkEndsAtOnce();
    void cancelIsSeenAmongFilesThatAreNoPoses_data();
    void cancelIsSeenAmongFilesThatAreNoPoses();
    void eachFileIsUnpackedByThreePhases();

    // the phases
    void everyPhaseAsksAfterEveryEntry();
    void nothingIsVisitedAfterCancel_data();
    void nothingIsVisitedAfterCancel();

    // telling
    void upToAThousandEveryEntryIsTold_data();
    void upToAThousandEveryEntryIsTold();
    void ofMoreEveryStepAndPositionAreTold_data();
    void ofMoreEveryStepAndPositionAreTold();
    void theLastIsToldWhereOthersFollow();
};

static QString s(const char* text)
{
    return QLatin1String(text);
}

namespace {

// Counts the host calls of a scan; presses Cancel at one of them.
class CallCount {
public:
    CallCount()
    {
        counts().clear();
        cancelAt() = -1;
        dzHostCallHook = note;
    }
    ~CallCount()
    {
        dzHostCallHook = nullptr;
    }
    static QMap<QByteArray, int>& counts()
    {
        static QMap<QByteArray, int> byName;
        return byName;
    }
    static int& cancelAt() // so manieth question for a cancel
    {
        static int question;
        return question;
    }

private:
    static bool note(const char* name, const void*)
    {
        const int count = ++counts()[name];
        if (count == cancelAt() && qstrcmp(name, "isCancelled") == 0)
            pressCancel();
        return false;
    }
    static void pressCancel()
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->inherits("DzProgressWindow"))
                window->findChild<QPushButton*>()->click();
        }
        counts().clear(); // from here on only what comes after
    }
};

} // namespace

static int countOf(const char* name)
{
    return CallCount::counts().value(name);
}

// ---- the walk

static void addTree(const ScanFixture& f)
{
    for (int n = 0; n < 40; ++n) {
        writeFile(f.content(qPrintable(QString("a/%1.png").arg(n))), "picture");
        writeFile(f.content(qPrintable(QString("a/b/%1.duf").arg(n))), "{}");
        QDir().mkpath(f.content(qPrintable(QString("c/%1").arg(n))));
    }
    QDir().mkpath(f.content("c/folder.duf"));
}

void TestScanCancel::theWalkAsksAfterEveryFileAndFolder()
{
    ScanFixture f;
    addTree(f);
    QStringList presets;
    int asked = 0;
    ContentVisitor visitor;
    visitor.missFolder = [](const QString&) {};
    visitor.visitPreset = [&](const QString& path) { presets << path; };
    visitor.isDone = [&] { return ++asked < 0; };
    walkContent(f.content(), visitor);
    QCOMPARE(presets, f.walked());
    QCOMPARE(presets.size(), 40);
    QCOMPARE(asked, 121 + 3); // the folders a, b, c
}

void TestScanCancel::theWalkEndsAtOnce_data()
{
    QTest::addColumn<int>("at");
    for (const int at : {1, 2, 50, 122})
        QTest::newRow(qPrintable(QString::number(at))) << at;
}

void TestScanCancel::theWalkEndsAtOnce()
{
    QFETCH(int, at);
    ScanFixture f;
    addTree(f);
    int asked = 0, visited = 0, visitedThen = -1;
    ContentVisitor visitor;
    visitor.missFolder = [](const QString&) {};
    visitor.visitPreset = [&](const QString&) { ++visited; };
    visitor.isDone = [&] {
        if (++asked == at)
            visitedThen = visited;
        return asked >= at;
    };
    walkContent(f.content(), visitor);
    QCOMPARE(asked, at);
    QCOMPARE(visited, visitedThen);
}

void TestScanCancel::cancelIsSeenAmongFilesThatAreNoPoses_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("other presets") << s("%1.duf");
    QTest::newRow("other files") << s("%1.png");
    QTest::newRow("folders") << s("%1/");
}

void TestScanCancel::cancelIsSeenAmongFilesThatAreNoPoses()
{
    QFETCH(QString, name);
    ScanFixture f;
    for (int n = 0; n < 300; ++n) {
        const QString path = f.content() + QLatin1Char('/') + name.arg(n);
        if (path.endsWith(QLatin1Char('/')))
            QDir().mkpath(path);
        else
            writeFile(path, "{}");
    }
    CallCount calls;
    CallCount::cancelAt() = 100;
    scanPoses();
    QCOMPARE(f.boxes.boxes.size(), 1);
    QCOMPARE(f.boxes.boxes.first().text, s("Scanning aborted"));
    QCOMPARE(countOf("isCancelled"), 0);
    QCOMPARE(countOf("gzOpen"), 0);
}

void TestScanCancel::eachFileIsUnpackedByThreePhases()
{
    ScanFixture f;
    for (int n = 0; n < 5; ++n)
        f.add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
    CallCount calls;
    QCOMPARE(f.scanned().size(), 5);
    QCOMPARE(countOf("gzOpen"), 3 * 5); // found, identified, indexed
}

// ---- the phases

static const int kPoses = 9;

static void addPoses(ScanFixture* f)
{
    for (int n = 0; n < kPoses; ++n)
        f->add(qPrintable(QString("%1.duf").arg(n)), poseNumber(n));
}

void TestScanCancel::everyPhaseAsksAfterEveryEntry()
{
    ScanFixture f;
    addPoses(&f);
    CallCount calls;
    QCOMPARE(f.scanned().size(), kPoses);
    QCOMPARE(countOf("isCancelled"), 9 * kPoses); // the walk and eight phases
}

void TestScanCancel::nothingIsVisitedAfterCancel_data()
{
    QTest::addColumn<int>("at");
    for (int phase = 0; phase < 9; ++phase) {
        QTest::newRow(qPrintable(QString("phase %1, first").arg(phase + 1))) << phase * kPoses + 1;
        QTest::newRow(qPrintable(QString("phase %1, last").arg(phase + 1)))
            << phase * kPoses + kPoses;
    }
}

void TestScanCancel::nothingIsVisitedAfterCancel()
{
    QFETCH(int, at);
    ScanFixture f;
    addPoses(&f);
    CallCount calls;
    CallCount::cancelAt() = at;
    ProgressLog log;
    scanPoses();
    QCOMPARE(f.boxes.boxes.first().text, s("Scanning aborted"));
    QCOMPARE(poseCount(), 0);
    QCOMPARE(countOf("isCancelled"), 0);
    QCOMPARE(countOf("gzOpen"), 0);
}

// ---- telling

static QVector<int> toldOf(int count, int last)
{
    EntriesToTell toTell(count, last);
    QVector<int> told;
    for (int entry = 0; entry <= last; ++entry) {
        if (toTell.isDue(entry))
            told << entry;
    }
    return told;
}

void TestScanCancel::upToAThousandEveryEntryIsTold_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {1, 2, 99, 100, 101, 999, 1000})
        QTest::newRow(qPrintable(QString::number(count))) << count;
}

void TestScanCancel::upToAThousandEveryEntryIsTold()
{
    QFETCH(int, count);
    QCOMPARE(toldOf(count, count - 1).size(), count);
}

void TestScanCancel::ofMoreEveryStepAndPositionAreTold_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("step");
    QTest::newRow("1001") << 1001 << 2;
    QTest::newRow("2000") << 2000 << 2;
    QTest::newRow("2001") << 2001 << 3;
    QTest::newRow("10007") << 10007 << 11;
    QTest::newRow("65536") << 65536 << 66;
}

void TestScanCancel::ofMoreEveryStepAndPositionAreTold()
{
    QFETCH(int, count);
    QFETCH(int, step);
    const QVector<int> told = toldOf(count, count - 1);
    QVector<int> expected;
    for (int entry = 0; entry < count; ++entry) {
        const bool isNew = entry == 0 || entry * 100 / count != (entry - 1) * 100 / count;
        if (isNew || entry % step == 0 || entry == count - 1)
            expected << entry;
    }
    QCOMPARE(told, expected);
    QVERIFY(told.size() <= 1101);
}

void TestScanCancel::theLastIsToldWhereOthersFollow()
{
    const QVector<int> told = toldOf(65536, 60001);
    QCOMPARE(told.last(), 60001);
    QVERIFY(!toldOf(65536, 60002).contains(60001));
}

QUILLON_TEST(TestScanCancel)
#include "test_scan_cancel.moc"
