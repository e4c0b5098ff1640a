#include "room_tests.h"

#include "host/body/own_picture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace quillon;

class TestOwnPicture : public QObject {
    Q_OBJECT
private slots:
    void isFound_data();
    void isFound();
};

void TestOwnPicture::isFound_data()
{
    QTest::addColumn<QString>("preset");
    QTest::addColumn<QString>("picture");
    QTest::newRow("name.duf.png") << "a.duf"
                                  << "a.duf.png";
    QTest::newRow("name.png") << "b.duf"
                              << "b.png";
    QTest::newRow("name.tip.png") << "c.duf"
                                  << "c.tip.png";
    QTest::newRow("all three") << "d.duf"
                               << "d.duf.png";
    QTest::newRow("a picture and a tip") << "e.duf"
                                         << "e.png";
    QTest::newRow("in capitals") << "f.DUF"
                                 << "f.png";
    QTest::newRow("a dot in the name") << "g.2.duf"
                                       << "g.2.png";
    QTest::newRow("none") << "h.duf" << QString();
    QTest::newRow("a folder of the name") << "i.duf" << QString();
}

void TestOwnPicture::isFound()
{
    QFETCH(QString, preset);
    QFETCH(QString, picture);
    const QTemporaryDir dir;
    for (const char* name : {"a.duf.png", "b.png", "c.tip.png", "d.duf.png", "d.png", "d.tip.png",
             "e.png", "e.tip.png", "f.png", "g.png", "g.2.png"}) {
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(QDir(dir.path()).mkdir("i.png"));
    const QString found = ownPicture(dir.filePath(preset));
    QCOMPARE(found, picture.isEmpty() ? QString() : dir.filePath(picture));
}

QUILLON_TEST(TestOwnPicture)
#include "test_own_picture.moc"
