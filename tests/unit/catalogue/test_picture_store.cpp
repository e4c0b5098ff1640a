#include "room_tests.h"

#include "catalogue/picture_store.h"
#include "catalogue/picture_worker.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace quillon;

class TestPictureStore : public QObject {
    Q_OBJECT
private slots:
    void init();
    void nameStaysWhileNothingChanges();
    void nameChangesWith_data();
    void nameChangesWith();
    void othersAreDropped();
    void jobComesBackFromItsLine();
    void lineThatIsNoJobIsRefused();

private:
    QString put(const char* name, const QByteArray& bytes);
    PictureJob job() const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestPictureStore::init()
{
    m_dir.reset(new QTemporaryDir);
    put("sit.duf", "pose");
    put("sit.png", "picture");
}

QString TestPictureStore::put(const char* name, const QByteArray& bytes)
{
    QFile file(m_dir->filePath(name));
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    return written ? file.fileName() : QString();
}

PictureJob TestPictureStore::job() const
{
    PictureJob job;
    job.pose = m_dir->filePath("sit.duf");
    job.own = m_dir->filePath("sit.png");
    return job;
}

void TestPictureStore::nameStaysWhileNothingChanges()
{
    const QString name = pictureName(job());
    QVERIFY2(QRegExp("pictures/[0-9a-f]{2}/[0-9a-f]{18}\\.jpg").exactMatch(name), qPrintable(name));
    QCOMPARE(pictureName(job()), name);
    PictureJob elsewhere = job();
    elsewhere.out = "/other/place.jpg";
    QCOMPARE(pictureName(elsewhere), name);
}

void TestPictureStore::nameChangesWith_data()
{
    QTest::addColumn<QString>("what");
    for (const char* what : {"path", "size", "time", "own size", "own time", "no own", "figure"})
        QTest::newRow(what) << what;
}

static bool makeOlder(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadWrite)
        && file.setFileTime(file.fileTime(QFileDevice::FileModificationTime).addMSecs(-5),
            QFileDevice::FileModificationTime);
}

void TestPictureStore::nameChangesWith()
{
    QFETCH(QString, what);
    PictureJob changed = job();
    const QString name = pictureName(changed);
    const QDateTime before = QFileInfo(changed.pose).lastModified();
    const QString grown = what.startsWith("own") ? changed.own : changed.pose;
    const QDateTime time = QFileInfo(grown).lastModified();
    if (what == "path") {
        QVERIFY(QFile::rename(changed.pose, m_dir->filePath("stand.duf")));
        changed.pose = m_dir->filePath("stand.duf");
    } else if (what.endsWith("size")) {
        QFile file(grown);
        QVERIFY(file.open(QIODevice::Append) && file.write(" ") == 1 && file.flush());
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    } else if (what.endsWith("time")) {
        QVERIFY(makeOlder(grown));
    } else if (what == "no own") {
        changed.own.clear();
    } else {
        changed.male = true;
    }
    QVERIFY(pictureName(changed) != name);
}

void TestPictureStore::othersAreDropped()
{
    for (const char* folder : {"pictures/00", "pictures/01", "elsewhere"})
        QVERIFY(QDir(m_dir->path()).mkpath(folder));
    for (const char* file : {"pictures/00/a.jpg", "pictures/00/b.jpg", "pictures/01/c.jpg",
             "pictures/01/c.jpg.Xy12", "elsewhere/d.jpg"})
        QVERIFY(!put(file, "x").isEmpty());
    dropOtherPictures(m_dir->path(), {"pictures/00/b.jpg"});
    QVERIFY(QFile::exists(m_dir->filePath("pictures/00/b.jpg")));
    QVERIFY(QFile::exists(m_dir->filePath("elsewhere/d.jpg")));
    QVERIFY(!QFile::exists(m_dir->filePath("pictures/00/a.jpg")));
    QVERIFY(!QFile::exists(m_dir->filePath("pictures/01")));
}

void TestPictureStore::jobComesBackFromItsLine()
{
    PictureJob told;
    told.pose = QString::fromUtf8("/a \"b\"\n\t\xc3\xa9</script>.duf");
    told.own = "/own.png";
    told.male = true;
    told.drawn = false;
    told.out = "/out.jpg";
    const QByteArray line = jobLine(told);
    QVERIFY(!line.contains('\n'));
    PictureJob read;
    QVERIFY(readJobLine(line, &read));
    QCOMPARE(read.pose, told.pose);
    QCOMPARE(read.own, told.own);
    QCOMPARE(read.male, true);
    QCOMPARE(read.drawn, false);
    QCOMPARE(read.out, told.out);
}

void TestPictureStore::lineThatIsNoJobIsRefused()
{
    PictureJob job;
    for (const char* line : {"", "x", "{}", "{\"pose\":\"/a.duf\"}", "{\"out\":\"/a.jpg\"}"})
        QVERIFY2(!readJobLine(line, &job), line);
}

QUILLON_TEST(TestPictureStore)
#include "test_picture_store.moc"
