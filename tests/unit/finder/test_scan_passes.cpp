// The fast passes over a table of poses against their literal forms.
#include "room_tests.h"

#include "reference/pass_differential.h"

#include <QtTest>

using namespace quillon;

class TestScanPasses : public QObject {
    Q_OBJECT

private slots:
    void verdictsAndPartnersAreThoseOfTheLiteralForms();
};

// Random, clustered and adversarial tables; a failing one is told by its seed. compare_passes does
// the same with a thousand larger ones.
void TestScanPasses::verdictsAndPartnersAreThoseOfTheLiteralForms()
{
    static const int kTables = 100, kMostEntries = 500;
    for (int seed = 1; seed <= kTables; ++seed) {
        std::string why;
        QVERIFY2(reference::passesAgree(quint64(seed), kMostEntries, &why), why.c_str());
    }
}

QUILLON_TEST_WITHOUT_APPLICATION(TestScanPasses)
#include "test_scan_passes.moc"
