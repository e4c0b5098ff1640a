// What a kept channel or place gets back, and what is left unwritten.
#include "figure_fixture.h"
#include "room_tests.h"

#include "figure/channel_snapshot.h"
#include "figure/same_place.h"

#include "dztimerange.h"

#include <QtTest>

#include <cmath>

using namespace quillon;

class TestChannelSnapshot : public QObject {
    Q_OBJECT
private slots:
    void keptChannelsAreAsKept();
    void aValueOrAKeyMoreIsNotAsKept();
    void putBackStoredTakesANewKeyAway();
    void putBackStoredBringsAKeyBack();
    void putBackStoredBringsTheSignOfZeroBack();
    void whatDidNotMoveGetsNoKey();
    void placesComeBack();
    void aScaleComesBack();
};

static int keysAt(const DzFloatProperty* channel, DzTime time)
{
    return channel->getNumKeys(DzTimeRange(time, time));
}

static ChannelSnapshot keepHead(const FigureFixture& f, DzTime time)
{
    ChannelSnapshot kept;
    keepPoseChannels(f.bone("head"), time, &kept);
    return kept;
}

void TestChannelSnapshot::keptChannelsAreAsKept()
{
    FigureFixture f;
    const ChannelSnapshot kept = keepHead(f, 0);
    QCOMPARE(kept.size(), size_t(6));
    QVERIFY(isAsKept(kept, 0));
}

void TestChannelSnapshot::aValueOrAKeyMoreIsNotAsKept()
{
    FigureFixture f;
    DzFloatProperty* bend = f.bone("head")->getXRotControl();
    const ChannelSnapshot kept = keepHead(f, 0);
    bend->setValue(0, 5);
    QVERIFY(!isAsKept(kept, 0));
    bend->setValue(0, kept[0].value);
    bend->setValue(480, kept[0].value);
    QVERIFY(!isAsKept(kept, 0));
}

void TestChannelSnapshot::putBackStoredTakesANewKeyAway()
{
    FigureFixture f;
    DzFloatProperty* bend = f.bone("head")->getXRotControl();
    bend->setValue(0, 0);
    bend->setValue(960, 8);
    const KeptValue kept = keepValue(bend, 480);
    QVERIFY(!kept.hasOwnKey);
    bend->setValue(480, 20);
    QCOMPARE(keysAt(bend, 480), 1);
    putBackStored(kept, 480);
    QCOMPARE(keysAt(bend, 480), 0);
    QCOMPARE(bend->getRawValue(480), kept.stored);
}

void TestChannelSnapshot::putBackStoredBringsAKeyBack()
{
    FigureFixture f;
    DzFloatProperty* bend = f.bone("head")->getXRotControl();
    bend->setValue(0, 0);
    bend->setValue(480, 4);
    bend->setValue(960, 8);
    const KeptValue kept = keepValue(bend, 480);
    bend->deleteKeys(DzTimeRange(480, 480));
    putBackStored(kept, 480);
    QCOMPARE(keysAt(bend, 480), 1);
    QCOMPARE(bend->getRawValue(480), 4.f);
}

void TestChannelSnapshot::putBackStoredBringsTheSignOfZeroBack()
{
    FigureFixture f;
    DzFloatProperty* bend = f.bone("head")->getXRotControl();
    bend->setRawValue(0, -0.f);
    const KeptValue kept = keepValue(bend, 0);
    bend->setRawValue(0, 0.f);
    putBackStored(kept, 0);
    QCOMPARE(std::signbit(bend->getRawValue(0)), std::signbit(kept.stored));
}

void TestChannelSnapshot::whatDidNotMoveGetsNoKey()
{
    FigureFixture f;
    f.bone("head")->getXRotControl()->setValue(0, 3);
    const ChannelSnapshot kept = keepHead(f, 480);
    for (const KeptValue& each : kept) {
        putBackValue(each, 480);
        putBackLook(each, 480);
        putBackStored(each, 480);
    }
    QVERIFY(isAsKept(kept, 480));
    for (const KeptValue& each : kept)
        QCOMPARE(keysAt(each.channel, 480), 0);
}

void TestChannelSnapshot::placesComeBack()
{
    FigureFixture f;
    DzBone* head = f.bone("head");
    head->getYRotControl()->setValue(0, 12);
    const NodePlace local = localPlaceOf(head, 0);
    const NodePlace world = worldPlaceOf(head, 0);
    head->getYRotControl()->setValue(0, 40);
    head->getXPosControl()->setValue(0, 2);
    QVERIFY(localPlaceOf(head, 0).rot != local.rot);
    putBackLocalPlace(head, 0, local);
    // Through the channels, which hold single precision.
    QVERIFY((localPlaceOf(head, 0).posCm - local.posCm).length() < 1e-4f);
    QVERIFY((worldPlaceOf(head, 0).posCm - world.posCm).length() < 1e-4f);
    QVERIFY(std::fabs(head->getYRotControl()->getValue(0) - 12) < 1e-3f);
}

void TestChannelSnapshot::aScaleComesBack()
{
    FigureFixture f;
    const NodePlace local = localPlaceOf(f.figure, 0);
    f.figure->getScaleControl()->setValue(0, 1.5f);
    QVERIFY(!sameScale(localPlaceOf(f.figure, 0).scale, local.scale));
    putBackLocalPlace(f.figure, 0, local);
    QVERIFY(sameScale(localPlaceOf(f.figure, 0).scale, local.scale));
}

QUILLON_TEST(TestChannelSnapshot)
#include "test_channel_snapshot.moc"
