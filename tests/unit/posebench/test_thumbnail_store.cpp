#include "room_tests.h"

#include "host/posebench/thumbnail_files.h"
#include "host/posebench/thumbnail_store.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace quillon;

// Stands for the process that draws: what a preset "shows" are the bytes of its file. It ends when
// it meets a preset whose name has "deadly" in it.
static const char kHelper[] = "#!/bin/sh\n"
                              "while IFS='\t' read -r from to; do\n"
                              "  case \"$from\" in *deadly*) exit 1 ;; esac\n"
                              "  cp \"$from\" \"$to\"\n"
                              "  echo \"$to\"\n"
                              "done\n";

class TestThumbnailStore : public QObject {
    Q_OBJECT
private slots:
    void init();
    void aLargePictureAddedLaterIsShown();
    void aPresetIsDrawnWhenItsPictureCannotBeRead_data();
    void aPresetIsDrawnWhenItsPictureCannotBeRead();
    void whatIsForgottenIsLookedForAnew();
    void onlyThePresetThatEndsTheHelperGetsNone();
    void withoutAHelperThatStartsThereAreNone();

private:
    QString path(const QString& name) const;
    QString put(const QString& name, const QByteArray& bytes) const;
    QString paint(const QString& name, Qt::GlobalColor color, int sidePx = 40) const;
    ThumbnailSetup setup() const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

// Black: there is none.
static QColor colorOf(ThumbnailStore* store, const QString& preset)
{
    const QPixmap pixmap = store->thumbnail(preset);
    return pixmap.isNull() ? QColor(Qt::black) : pixmap.toImage().pixelColor(20, 20);
}

void TestThumbnailStore::init()
{
    m_dir.reset(new QTemporaryDir);
    put("helper", kHelper);
    QVERIFY(QFile::setPermissions(path("helper"), QFile::ReadOwner | QFile::ExeOwner));
}

QString TestThumbnailStore::path(const QString& name) const
{
    return m_dir->filePath(name);
}

QString TestThumbnailStore::put(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    return written ? file.fileName() : QString();
}

QString TestThumbnailStore::paint(const QString& name, Qt::GlobalColor color, int sidePx) const
{
    QImage image(sidePx, sidePx, QImage::Format_RGB32);
    image.fill(color);
    image.save(path(name), "PNG");
    return path(name);
}

ThumbnailSetup TestThumbnailStore::setup() const
{
    return {path("thumbnails"), path("helper"), kThumbnailBytes};
}

void TestThumbnailStore::aLargePictureAddedLaterIsShown()
{
    const QString preset = paint("sit.duf", Qt::blue);
    ThumbnailStore before(setup());
    QTRY_COMPARE(colorOf(&before, preset), QColor(Qt::blue));
    paint("sit.png", Qt::green, 600);
    ThumbnailStore later(setup());
    QTRY_COMPARE(colorOf(&later, preset), QColor(Qt::green));
    paint("sit.png", Qt::red, 700);
    ThumbnailStore last(setup());
    QTRY_COMPARE(colorOf(&last, preset), QColor(Qt::red));
}

void TestThumbnailStore::aPresetIsDrawnWhenItsPictureCannotBeRead_data()
{
    QTest::addColumn<int>("bytes"); // of the picture; -1: of no picture
    QTest::newRow("no picture at all") << -1;
    QTest::newRow("empty") << 0;
    QTest::newRow("cut off behind its size") << 40;
}

void TestThumbnailStore::aPresetIsDrawnWhenItsPictureCannotBeRead()
{
    QFETCH(int, bytes);
    const QString preset = paint("sit.duf", Qt::blue);
    const QString own = paint("sit.png", Qt::green);
    QVERIFY(bytes < 0 ? !put("sit.png", "no picture").isEmpty() : QFile::resize(own, bytes));
    ThumbnailStore store(setup());
    QTRY_COMPARE(colorOf(&store, preset), QColor(Qt::blue));
}

void TestThumbnailStore::whatIsForgottenIsLookedForAnew()
{
    const QString shown = put("shown.duf", "pose"), none = put("none.duf", "pose");
    paint("shown.png", Qt::green);
    ThumbnailStore store({path("thumbnails"), QString(), kThumbnailBytes});
    QCOMPARE(colorOf(&store, none), QColor(Qt::black)); // looked for before the other
    QTRY_COMPARE(colorOf(&store, shown), QColor(Qt::green));
    paint("shown.png", Qt::red);
    paint("none.png", Qt::red);
    QCOMPARE(colorOf(&store, shown), QColor(Qt::green)); // of what is known no file is read
    store.forget();
    QTRY_COMPARE(colorOf(&store, shown), QColor(Qt::red));
    QTRY_COMPARE(colorOf(&store, none), QColor(Qt::red));
}

void TestThumbnailStore::onlyThePresetThatEndsTheHelperGetsNone()
{
    ThumbnailStore store(setup());
    const QStringList good {paint("a.duf", Qt::blue), paint("b.duf", Qt::blue),
        paint("c.duf", Qt::blue), paint("d.duf", Qt::blue)};
    const QString deadly = paint("deadly.duf", Qt::blue);
    const QStringList inOrder {good.at(0), deadly, good.at(1), good.at(2), good.at(3)};
    for (const QString& preset : inOrder)
        store.thumbnail(preset);
    for (const QString& preset : good)
        QTRY_COMPARE(colorOf(&store, preset), QColor(Qt::blue));
    QCOMPARE(colorOf(&store, deadly), QColor(Qt::black));
    QCOMPARE(store.made(), 4);
}

void TestThumbnailStore::withoutAHelperThatStartsThereAreNone()
{
    const QString drawn = paint("drawn.duf", Qt::blue), own = put("own.duf", "pose");
    ThumbnailStore store({path("thumbnails"), path("no such"), kThumbnailBytes});
    QCOMPARE(colorOf(&store, drawn), QColor(Qt::black));
    paint("own.png", Qt::green);
    QTRY_COMPARE(colorOf(&store, own), QColor(Qt::green));
    QCOMPARE(colorOf(&store, drawn), QColor(Qt::black));
    QCOMPARE(store.made(), 0);
}

QUILLON_TEST(TestThumbnailStore)
#include "test_thumbnail_store.moc"
