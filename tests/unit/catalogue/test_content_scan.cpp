// What a scan tells of what is not there.
#include "frame_fixture.h"
#include "room_tests.h"

#include "catalogue/catalogue_options.h"
#include "catalogue/content_scan.h"

#include <QtTest>

using namespace quillon;

class TestContentScan : public QObject {
    Q_OBJECT
private slots:
    void aFigureThatIsNotThereIsTold();
    void contentThatIsGoneIsTold();

private:
    bool run(const CatalogueOptions& options)
    {
        ContentScan scan(options);
        return scan.run(
            options, [](const QString&) {}, &m_report, &m_why);
    }
    ScanReport m_report;
    QString m_why;
};

void TestContentScan::aFigureThatIsNotThereIsTold()
{
    CatalogueOptions options;
    options.figure = "NoSuchFigure";
    QVERIFY(!run(options));
    QVERIFY2(m_why.contains("NoSuchFigure"), qPrintable(m_why));
}

// It was there when the options were read.
void TestContentScan::contentThatIsGoneIsTold()
{
    const TempFolder folder;
    CatalogueOptions options;
    options.content << folder.path("gone");
    m_report = ScanReport();
    QVERIFY2(run(options), qPrintable(m_why));
    QCOMPARE(m_report.missedFolders, QStringList(folder.path("gone")));
}

QUILLON_TEST(TestContentScan)
#include "test_content_scan.moc"
