#include "browse_fixture.h"
#include "room_tests.h"

#include "finder/figure_place.h"

#include "finder/figure_place.h"

using namespace quillon;

class TestFigurePlace : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<BrowseFixture> m_finder;

    static RawPose withFigure(const DzNode* figure)
    {
        RawPose pose = rawPose(figure);
        for (DzFloatProperty* each : poseChannelsOf(figure).channel)
            pose.push_back(std::make_pair(each, each->getRawValue()));
        return pose;
    }
    // Empty when all raw values are the same to the bit.
    static QString firstChange(const RawPose& a, const RawPose& b)
    {
        for (size_t i = 0; i < a.size(); ++i) {
            if (a[i].second != b[i].second)
                return QString("%1: %2, was %3")
                    .arg(channelPath(a[i].first))
                    .arg(double(b[i].second), 0, 'g', 9)
                    .arg(double(a[i].second), 0, 'g', 9);
        }
        return QString();
    }
private slots:
    void init()
    {
        m_finder.reset(new BrowseFixture);
    }
    void cleanup()
    {
        m_finder.reset();
    }

    void aFigureWithoutHipHasNoPlace()
    {
        QVERIFY(m_finder->figure->removeBone(m_finder->bone("hip")));
        const FigurePlace place = placeOf(m_finder->figure, m_finder->time());
        QVERIFY(!isPlaceOf(place, m_finder->figure));
    }

    // ---- the order of things -----------------------------------------------------------------

    void samePoseAgainGivesTheSameChannels_data()
    {
        QTest::addColumn<double>("yawDeg");
        QTest::addColumn<double>("hipYawDeg");
        QTest::newRow("at rest") << 0.0 << 0.0;
        QTest::newRow("turned by 90") << 90.0 << 0.0;
        QTest::newRow("turned by more than half a circle") << 200.0 << 0.0;
        QTest::newRow("pose turned by 170") << 30.0 << 170.0;
    }
    void samePoseAgainGivesTheSameChannels()
    {
        QFETCH(double, yawDeg);
        QFETCH(double, hipYawDeg);
        m_finder->addFile("a.duf", values({{"hip/y", hipYawDeg}, {"lShin/x", 40}}));
        m_finder->addFile("b.duf", values({{"hip/y", -160}, {"hip/x", 30}, {"chestLower/z", 5}}));
        m_finder->figure->getYRotControl()->setValue(float(yawDeg));
        m_finder->figure->setWSPos(DzVec3(12, 3, -8));
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        const RawPose first = withFigure(m_finder->figure);
        m_finder->apply(1);
        QVERIFY(!firstChange(first, withFigure(m_finder->figure)).isEmpty());
        m_finder->apply(0);
        VERIFY_NONE(firstChange(first, withFigure(m_finder->figure)));
    }

    void hipTurnsAsInTheFile()
    {
        m_finder->addFile("a.duf", values({{"hip/x", 20}, {"hip/y", 75}, {"hip/z", -10}}));
        m_finder->figure->getYRotControl()->setValue(40);
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        QCOMPARE(m_finder->rotationDeg("hip", 'x'), 20.f);
        QCOMPARE(m_finder->rotationDeg("hip", 'y'), 75.f);
        QCOMPARE(m_finder->rotationDeg("hip", 'z'), -10.f);
    }

    // The figure takes its own rotation back; what the file turned goes into the hip, and then the
    // figure turns until it faces as before.
    void fileThatTurnsTheFigureTurnsOnlyThePose()
    {
        m_finder->addFile("a.duf", PoseValues(), kFemaleCode,
            QList<QByteArray>() << valueEntry(":?rotation/y", "50")
                                << valueEntry(":?rotation/x", "20")
                                << valueEntry(":?translation/x", "300"));
        m_finder->figure->setWSPos(DzVec3(12, 0, -8));
        m_finder->browse(AllPoses);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        m_finder->apply(0);
        const DzVec3 up = m_finder->bone("hip")->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(nearly(up.m_y, std::cos(20 * kPi / 180), 1e-6)); // it leans as in the file
        QVERIFY(nearly(headingBetween(0, m_finder->headingDeg()), 0, 1e-3));
        QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-4);
        const DzVec3 figureUp = m_finder->figure->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(nearly(figureUp.m_y, 1, 1e-6)); // and the figure does not
        const DzVec3 fromFileRad(float(20 * kPi / 180), float(50 * kPi / 180), 0);
        const DzQuat fromFile(m_finder->figure->getRotationOrder().order(), fromFileRad);
        QVERIFY(angleDeg(m_finder->bone("hip")->getLocalRot(), fromFile) < 1e-3);
    }

    // ---- place, facing, size -----------------------------------------------------------------

    void figureStaysWhereItStandsAndFaces_data()
    {
        QTest::addColumn<double>("hipYawDeg");
        for (double yawDeg : {-179.0, -135.0, -90.0, -1.0, 0.0, 1.0, 45.0, 90.0, 179.0})
            QTest::newRow(qPrintable(QString::number(yawDeg))) << yawDeg;
    }
    void figureStaysWhereItStandsAndFaces()
    {
        QFETCH(double, hipYawDeg);
        m_finder->addFile("a.duf", values({{"hip/y", hipYawDeg}, {"hip/x", 15}}));
        m_finder->figure->getYRotControl()->setValue(90);
        m_finder->figure->setWSPos(DzVec3(210, 7, -130));
        m_finder->figure->getScaleControl()->setValue(1.25f);
        m_finder->browse(AllPoses);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        m_finder->apply(0);
        QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-3);
        QVERIFY(nearly(headingBetween(90, m_finder->headingDeg()), 0, 1e-3));
        const DzVec3 figureUp = m_finder->figure->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(nearly(figureUp.m_y, 1, 1e-6)); // turned about the vertical alone
        QCOMPARE(m_finder->figure->getScaleControl()->getValue(), 1.25f);
        QVERIFY(!m_finder->next()); // and it is no move of the user's
    }

    // Lying, the feet show where the figure faces: the head where its back would be.
    void lyingFigureLiesAlongItsFacing_data()
    {
        QTest::addColumn<double>("hipX");
        QTest::addColumn<double>("hipZ");
        QTest::addColumn<double>("hipY");
        QTest::newRow("on the back") << -90.0 << 0.0 << 0.0;
        QTest::newRow("on the back, turned") << -90.0 << 0.0 << 70.0;
        QTest::newRow("on the left side") << 0.0 << -90.0 << 0.0;
        QTest::newRow("on the right side") << 0.0 << 90.0 << 0.0;
    }
    void lyingFigureLiesAlongItsFacing()
    {
        QFETCH(double, hipX);
        QFETCH(double, hipY);
        QFETCH(double, hipZ);
        m_finder->addFile("a.duf", values({{"hip/x", hipX}, {"hip/y", hipY}, {"hip/z", hipZ}}));
        m_finder->figure->getYRotControl()->setValue(90); // faces +X
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        const DzVec3 head = m_finder->bone("hip")->getWSRot().multVec(DzVec3(0, 1, 0));
        QVERIFY(distance(head, DzVec3(-1, 0, 0)) < 1e-5);
    }

    void movedFigureIsBrowsedWhereItIsNow()
    {
        m_finder->addFile("a.duf", values({{"lShin/x", 30}}));
        m_finder->addFile("b.duf", values({{"lShin/x", 60}}));
        m_finder->bone("hip")->setLocalPos(m_finder->time(), DzVec3(1, 2, 3));
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        m_finder->figure->getXPosControl()->setValue(100);
        m_finder->figure->getZRotControl()->setValue(10);
        m_finder->apply(1);
        QCOMPARE(m_finder->figure->getXPosControl()->getValue(), 100.f);
        QCOMPARE(m_finder->bone("hip")->getLocalPos(), DzVec3(1, 2, 3));
        m_finder->apply(0);
        QCOMPARE(m_finder->figure->getXPosControl()->getValue(), 100.f);
    }

    void figureMovedBeforeTheFirstPoseIsBrowsedWhereItIsNow()
    {
        m_finder->addFile("a.duf", values({{"lShin/x", 30}}));
        m_finder->browse(AllPoses);
        m_finder->figure->getXPosControl()->setValue(100);
        m_finder->figure->getYRotControl()->setValue(90);
        m_finder->apply(0);
        QCOMPARE(m_finder->figure->getXPosControl()->getValue(), 100.f);
        QVERIFY(nearly(headingBetween(90, m_finder->headingDeg()), 0, 1e-4));
    }

    void hipKeepsItsTranslation()
    {
        m_finder->addFile("a.duf", values({{"hip/y", 120}}), kFemaleCode,
            QList<QByteArray>() << valueEntry("/hip:?translation/y", "55"));
        m_finder->addFile("b.duf", values({{"hip/x", 50}}));
        m_finder->bone("hip")->getYPosControl()->setValue(10);
        m_finder->browse(AllPoses);
        const DzVec3 hipCm_world = m_finder->hipCm_world();
        for (int entry : {0, 1, 0}) {
            m_finder->apply(entry);
            QCOMPARE(m_finder->bone("hip")->getLocalPos(), DzVec3(0, 10, 0));
            QVERIFY(distance(m_finder->hipCm_world(), hipCm_world) < 1e-4);
        }
    }

    void sizesArePutBack()
    {
        m_finder->addFile("a.duf", values({{"lShin/x", 30}}));
        m_finder->figure->getXScaleControl()->setValue(1.5f);
        m_finder->bone("hip")->getScaleControl()->setValue(0.9f);
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        m_finder->figure->getXScaleControl()->setValue(2); // moves neither hip nor heading
        m_finder->bone("hip")->getScaleControl()->setValue(1);
        m_finder->apply(0);
        QCOMPARE(m_finder->figure->getXScaleControl()->getValue(), 1.5f);
        QCOMPARE(m_finder->bone("hip")->getScaleControl()->getValue(), 0.9f);
    }

    // A pose's turn of the figure is taken back, not taken for the way that the user faces it.
    void otherTypeFindsTheFigureFacingAsBefore()
    {
        m_finder->addPose("a.duf", values({{"hip/y", 130}}));
        m_finder->figure->getYRotControl()->setValue(90);
        m_finder->browse(AllPoses);
        for (int type : {Standing, AllPoses, Standing}) {
            pluginSettings().currentPose = 0;
            m_finder->next();
            QVERIFY(nearly(m_finder->figure->getYRotControl()->getValue(), -40, 1e-3));
            m_finder->browse(type);
            QCOMPARE(m_finder->figure->getYRotControl()->getValue(), 90.f);
            QVERIFY(nearly(headingBetween(90, m_finder->headingDeg()), 0, 1e-4));
        }
    }

    void otherTypeKeepsAFigureThatTheUserTurned()
    {
        m_finder->addPose("a.duf", values({{"hip/y", 130}}));
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        m_finder->figure->getYRotControl()->setValue(30);
        m_finder->browse(Standing);
        QCOMPARE(m_finder->figure->getYRotControl()->getValue(), 30.f);
    }
};

QUILLON_TEST(TestFigurePlace)
#include "test_figure_place.moc"
