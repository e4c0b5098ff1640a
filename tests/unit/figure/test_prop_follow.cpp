// A prop with a channel that cannot follow a new origin or rotation order: nothing changes.
#include "prop_fixture.h"
#include "room_tests.h"

#include "figure/prop_origin.h"

#include <QtTest>

using namespace quillon;

class TestPropFollow : public QObject {
    Q_OBJECT
private slots:
    void aChannelThatCannotFollowLeavesEverythingAsItIs_data();
    void aChannelThatCannotFollowLeavesEverythingAsItIs();
    void aLockedOriginLeavesEverythingAsItIs();
    void limitsDoNotTurnTheProp_data();
    void limitsDoNotTurnTheProp();
};

static const OriginChoice kChoices[] = {OriginChoice::Keep, OriginChoice::Imported,
    OriginChoice::ObjectCentre, OriginChoice::WorldCentre};
static const DzRotationOrder::RotOrder kOrders[] = {DzRotationOrder::XYZ, DzRotationOrder::XZY,
    DzRotationOrder::YXZ, DzRotationOrder::YZX, DzRotationOrder::ZXY, DzRotationOrder::ZYX};
static const DzTime kStep = PropFixture::kStep;

// Two equal keys in each channel. A new order changes every angle, a new origin every translation.
static void keyAllChannels(PropFixture* f)
{
    const float values[] = {20, 40, -30, 5, 6, 7};
    for (size_t i = 0; i < 6; ++i)
        for (int frame : {0, 10})
            poseChannels(f->prop)[i]->setValue(frame * kStep, values[i]);
    f->prop->setOrigin(DzVec3(5, -4, 3), true);
    f->undoStack.clearAll();
}

// Holds a channel at the value that it has.
static void hold(DzFloatProperty* channel, bool byLock)
{
    if (byLock) {
        channel->lock(true);
        return;
    }
    channel->setMinMax(channel->getValue(), channel->getValue());
    channel->setIsClamped(true);
}

void TestPropFollow::aChannelThatCannotFollowLeavesEverythingAsItIs_data()
{
    QTest::addColumn<int>("choice");
    QTest::addColumn<int>("channel");
    QTest::addColumn<bool>("byLock");
    QTest::addColumn<bool>("newOrder");
    const char* const names[]
        = {"XRotate", "YRotate", "ZRotate", "XTranslate", "YTranslate", "ZTranslate"};
    for (int choice = 0; choice < 4; ++choice)
        for (int channel = 0; channel < 6; ++channel)
            for (int variant = 0; variant < 4; ++variant)
                QTest::newRow(qPrintable(QString("choice %1, %2 %3, %4 order")
                                             .arg(choice)
                                             .arg(names[channel])
                                             .arg(variant & 1 ? "locked" : "limited")
                                             .arg(variant & 2 ? "another" : "the same")))
                    << choice << channel << bool(variant & 1) << bool(variant & 2);
}

void TestPropFollow::aChannelThatCannotFollowLeavesEverythingAsItIs()
{
    QFETCH(int, choice);
    QFETCH(int, channel);
    QFETCH(bool, byLock);
    QFETCH(bool, newOrder);
    PropFixture f;
    keyAllChannels(&f);
    hold(poseChannels(f.prop)[size_t(channel)], byLock);
    const bool hasToChange = channel < 3 ? newOrder : kChoices[choice] != OriginChoice::Keep;
    const DzRotationOrder order = newOrder ? DzRotationOrder::ZYX : DzRotationOrder::XYZ;
    const QStringList keys = keysOf(f.prop);
    const std::vector<DzVec3> corners = cornersAt(f.prop, 10 * kStep);
    QCOMPARE(setPropOrigin(f.prop, order, kChoices[choice]), !hasToChange);
    QVERIFY(furthestMoveCm(corners, cornersAt(f.prop, 10 * kStep)) <= 1e-3);
    QCOMPARE(f.prop->getRotationOrder() == DzRotationOrder::XYZ, hasToChange || !newOrder);
    QCOMPARE(f.prop->getOrigin() == DzVec3(5, -4, 3),
        hasToChange || kChoices[choice] == OriginChoice::Keep);
    if (hasToChange)
        QCOMPARE(keysOf(f.prop), keys);
}

void TestPropFollow::aLockedOriginLeavesEverythingAsItIs()
{
    PropFixture f;
    keyAllChannels(&f);
    f.prop->getOriginYControl()->lock(true);
    const QStringList keys = keysOf(f.prop);
    QVERIFY(!setPropOrigin(f.prop, DzRotationOrder::ZYX, OriginChoice::Imported));
    QCOMPARE(keysOf(f.prop), keys);
    QCOMPARE(f.prop->getOrigin(), DzVec3(5, -4, 3));
    QCOMPARE(f.prop->getRotationOrder().order(), DzRotationOrder::XYZ);
    QVERIFY(setPropOrigin(f.prop, DzRotationOrder::ZYX, OriginChoice::Keep));
}

void TestPropFollow::limitsDoNotTurnTheProp_data()
{
    QTest::addColumn<bool>("ignoresLimits");
    QTest::newRow("a host that minds limits") << false;
    QTest::newRow("a host that does not") << true;
}

void TestPropFollow::limitsDoNotTurnTheProp()
{
    QFETCH(bool, ignoresLimits);
    const EulerChoice choice(ignoresLimits);
    Random random(43);
    for (int round = 0; round < 40; ++round) {
        PropFixture f;
        for (int i = 0; i < 3; ++i) {
            poseChannels(f.prop)[size_t(i)]->setMinMax(-180, 180); // any rotation is within
            poseChannels(f.prop)[size_t(i)]->setIsClamped(true);
        }
        f.poseAt(0, &random);
        f.poseAt(10 * kStep, &random);
        const std::vector<DzVec3> first = cornersAt(f.prop, 0);
        const std::vector<DzVec3> last = cornersAt(f.prop, 10 * kStep);
        QVERIFY(setPropOrigin(f.prop, kOrders[round % 6], OriginChoice::ObjectCentre));
        QVERIFY(furthestMoveCm(first, cornersAt(f.prop, 0)) <= 1e-3);
        QVERIFY(furthestMoveCm(last, cornersAt(f.prop, 10 * kStep)) <= 1e-3);
    }
}

QUILLON_TEST(TestPropFollow)
#include "test_prop_follow.moc"
