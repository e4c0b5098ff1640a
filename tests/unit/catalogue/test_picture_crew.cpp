// What becomes of the jobs when workers cannot be started, or end at once.
#include "room_tests.h"

#include "catalogue/picture_crew.h"

#include <QtTest>

using namespace quillon;

class TestPictureCrew : public QObject {
    Q_OBJECT
private slots:
    void withoutJobsNobodyIsStarted();
    void aProgramThatIsNotThereIsTold();
    void workersThatEndAtOnceCostTheirPictures();

private:
    bool make(const QString& program, int jobs)
    {
        m_done = 0;
        m_why.clear();
        const PictureJob job = {"/a.duf", QString(), false, true, "/a.jpg"};
        return makePictures(
            program, 2, std::vector<PictureJob>(size_t(jobs), job), [this] { ++m_done; }, &m_why);
    }
    int m_done = 0;
    QString m_why;
};

void TestPictureCrew::withoutJobsNobodyIsStarted()
{
    QVERIFY(make("/no/such/program", 0));
    QCOMPARE(m_done, 0);
}

void TestPictureCrew::aProgramThatIsNotThereIsTold()
{
    QVERIFY(!make("/no/such/program", 3));
    QVERIFY2(m_why.startsWith("/no/such/program: "), qPrintable(m_why));
    QCOMPARE(m_done, 0);
}

void TestPictureCrew::workersThatEndAtOnceCostTheirPictures()
{
    QVERIFY2(make("/bin/false", 5), qPrintable(m_why));
    QCOMPARE(m_done, 5);
}

QUILLON_TEST(TestPictureCrew)
#include "test_picture_crew.moc"
