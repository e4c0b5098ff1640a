// Bake and scales: what a control that falls to 0 did to a scale stays.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/bake_pose.h"

#include "dzerclink.h"

#include <QtTest>

using namespace quillon;

class TestBakeScale : public QObject {
    Q_OBJECT
private slots:
    void aScaleThatAControlMadeStays();
};

// Channels are single precision, the scale is a product of two of them.
static const double kScaleTolerance = 1e-5;

void TestBakeScale::aScaleThatAControlMadeStays()
{
    FigureFixture f;
    DzFloatProperty* control = f.control("pCTRLKneesUpLeft");
    DzFloatProperty* channel = f.bone("lShin")->getYScaleControl();
    QVERIFY(channel->insertController(new DzERCLink(control, DzERCLink::ERCDeltaAdd0, 0.5)));
    control->setValue(0.5f);
    QVERIFY(nearly(channel->getValue(), 1.25, kScaleTolerance));
    const DzMatrix3 before = f.bone("lShin")->getWSScale();
    bakePose(f.figure, BakeBody);
    QCOMPARE(control->getValue(), 0.f);
    const DzMatrix3 after = f.bone("lShin")->getWSScale();
    for (int row = 0; row < 3; ++row)
        QVERIFY(distance(after[row], before[row]) <= kScaleTolerance);
    QVERIFY(nearly(channel->getRawValue(), 1.25, kScaleTolerance));
}

QUILLON_TEST(TestBakeScale)
#include "test_bake_scale.moc"
