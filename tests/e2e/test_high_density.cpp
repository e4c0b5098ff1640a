// On a screen with two pixels for each coordinate everything is drawn in those pixels, not drawn
// small and made larger: then the four pixels of a pair of pairs would be equal.
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class TestHighDensity : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void everythingHasTwiceThePixels();
    void paneArtworkHasDetailInPairs();
    void viewportHasDetailInPairs();

private:
    QImage picture(const char* name) const;

    QTemporaryDir m_home;
};

static const char kScript[] = "var pane = MainWindow.getPaneMgr().findPane('DzQuillonPane');\n"
                              "Bench.resize(pane, 400, 800);\n"
                              "Bench.move(pane, 2, 790);\n"
                              "Bench.grab(pane, args[0] + '/pane.png');\n"
                              "Bench.grab(MainWindow, args[0] + '/window.png');\n"
                              "quit(0);\n";

void TestHighDensity::initTestCase()
{
    QFile script(m_home.path() + "/script.js");
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(kScript);
    script.close();
    QProcess bench;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", "2");
    bench.setProcessEnvironment(environment);
    bench.start(POSEBENCH,
        {"--headless", "--home", m_home.path() + "/home", "--figure", "Genesis8Female", "--size",
            "1400x900", "--script", script.fileName(), m_home.path()});
    QVERIFY(bench.waitForFinished());
    QVERIFY2(bench.exitCode() == 0, bench.readAllStandardError().constData());
}

QImage TestHighDensity::picture(const char* name) const
{
    return QImage(m_home.path() + '/' + name).convertToFormat(QImage::Format_RGB32);
}

void TestHighDensity::everythingHasTwiceThePixels()
{
    QCOMPARE(picture("pane.png").size(), QSize(800, 1600));
    QCOMPARE(picture("window.png").width(), 2800);
}

// Of the squares of two by two pixels that differ from a neighbour, the share that is not of one
// colour: edges. Drawn small and made larger, every square is of one colour.
static double detail(const QImage& image, const QRect& rect)
{
    int edges = 0, mixed = 0;
    for (int y = rect.top() & ~1; y + 3 < rect.bottom(); y += 2)
        for (int x = rect.left() & ~1; x + 3 < rect.right(); x += 2) {
            const QRgb first = image.pixel(x, y);
            const bool isMixed = image.pixel(x + 1, y) != first || image.pixel(x, y + 1) != first
                || image.pixel(x + 1, y + 1) != first;
            edges += isMixed || image.pixel(x + 2, y) != first || image.pixel(x, y + 2) != first;
            mixed += isMixed;
        }
    return edges ? double(mixed) / edges : 0;
}

void TestHighDensity::paneArtworkHasDetailInPairs()
{
    const QImage pane = picture("pane.png");
    // The sixteen buttons of the main page: pictures only, no text.
    const QRect buttons(
        2 * 400 * 30 / 512, 2 * 800 * 270 / 1024, 2 * 400 * 454 / 512, 2 * 800 * 400 / 1024);
    const double found = detail(pane, buttons);
    QVERIFY2(found > 0.5, qPrintable(QString::number(found)));
}

void TestHighDensity::viewportHasDetailInPairs()
{
    const QImage window = picture("window.png");
    // The middle of the picture, where the figure stands: no text there either.
    const QRect figure(2 * 650, 2 * 150, 2 * 220, 2 * 450);
    const double found = detail(window, figure);
    QVERIFY2(found > 0.5, qPrintable(QString::number(found)));
}

QTEST_GUILESS_MAIN(TestHighDensity)
#include "test_high_density.moc"
