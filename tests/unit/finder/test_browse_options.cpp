#include "browse_fixture.h"
#include "room_tests.h"

using namespace quillon;

class TestBrowseOptions : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<BrowseFixture> m_finder;

private slots:
    void init()
    {
        m_finder.reset(new BrowseFixture);
    }
    void cleanup()
    {
        m_finder.reset();
    }

    // ---- limits and translations -------------------------------------------------------------

    void poseMayGoBeyondTheLimitsWhereAllowed_data()
    {
        QTest::addColumn<bool>("allowed");
        QTest::newRow("allowed") << true;
        QTest::newRow("not allowed") << false;
    }
    void poseMayGoBeyondTheLimitsWhereAllowed()
    {
        QFETCH(bool, allowed);
        pluginSettings().allowPoseViolation = allowed;
        const DzFloatProperty* bend = m_finder->bone("lThighBend")->getXRotControl();
        DzFloatProperty* const control = m_finder->control("pCTRLKneesUp");
        QVERIFY(bend->isClamped() && control->isClamped() && bend->getMin() > -170);
        m_finder->addFile("a.duf", values({{"lThighBend/x", -170}}), kFemaleCode,
            QList<QByteArray>() << valueEntry("#pCTRLKneesUp:?value", "3"));
        control->setMax(2);
        m_finder->browse(AllPoses);
        const FigureState before = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        m_finder->apply(0);
        QCOMPARE(bend->isClamped(), !allowed);
        QCOMPARE(control->isClamped(), !allowed);
        QCOMPARE(control->getValue(), allowed ? 3.f : 2.f);
        if (allowed)
            QVERIFY(bend->getRawValue() == -170.f);
        else
            QVERIFY(bend->getValue() >= bend->getMin() && bend->getRawValue() > -170);
        QVERIFY(m_finder->bone("lEye")->getXRotControl()->isClamped()); // no part of this
        m_finder->rig.undoStack.undo();
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
    }

    void limitsThatTheUserLiftedAreSetWhereNotAllowed()
    {
        pluginSettings().allowPoseViolation = false;
        m_finder->addFile("a.duf", values({{"lThighBend/x", -170}}));
        liftAllLimits(m_finder->figure);
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        const DzFloatProperty* bend = m_finder->bone("lThighBend")->getXRotControl();
        QVERIFY(bend->isClamped());
        QCOMPARE(bend->getRawValue(), bend->getMin());
    }

    void faceMayGoBeyondTheLimitsWhereAllowed_data()
    {
        poseMayGoBeyondTheLimitsWhereAllowed_data();
    }
    void faceMayGoBeyondTheLimitsWhereAllowed()
    {
        QFETCH(bool, allowed);
        pluginSettings().allowFaceViolation = allowed;
        DzFloatProperty* const smile = m_finder->control("eCTRLMouthSmile");
        const DzFloatProperty* jaw = m_finder->bone("lowerJaw")->getXRotControl();
        QVERIFY(smile && smile->isClamped() && jaw->isClamped() && jaw->getMax() < 90);
        m_finder->addFile("a.duf", values({{"lowerJaw/x", 90}}), kFemaleCode,
            QList<QByteArray>() << valueEntry("#eCTRLMouthSmile:?value", "4"));
        m_finder->browse(AllPoses);
        const FigureState before = stateOf(m_finder->figure);
        m_finder->rig.undoStack.clearAll();
        m_finder->apply(0);
        QCOMPARE(jaw->isClamped(), !allowed);
        QCOMPARE(smile->isClamped(), !allowed);
        QCOMPARE(smile->getValue(), allowed ? 4.f : smile->getMax());
        QCOMPARE(jaw->getRawValue() == 90.f, allowed);
        QVERIFY(!m_finder->bone("lThighBend")->getXRotControl()->isClamped()); // allowed itself
        m_finder->rig.undoStack.undo();
        VERIFY_SAME_STATE(before, stateOf(m_finder->figure));
    }

    void translationsAreZeroedUnlessAllowed_data()
    {
        poseMayGoBeyondTheLimitsWhereAllowed_data();
    }
    void translationsAreZeroedUnlessAllowed()
    {
        QFETCH(bool, allowed);
        pluginSettings().allowTranslations = allowed;
        clearAllLocks(m_finder->figure);
        m_finder->addFile("a.duf", PoseValues(), kFemaleCode,
            QList<QByteArray>() << valueEntry("/lShin:?translation/x", "0.5")
                                << valueEntry("/head:?translation/y", "-0.25")
                                << valueEntry("/lEar:?translation/z", "0.75"));
        m_finder->bone("hip")->getYPosControl()->setValue(10);
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        QCOMPARE(m_finder->bone("lShin")->getXPosControl()->getValue(), allowed ? 0.5f : 0.f);
        QCOMPARE(m_finder->bone("head")->getYPosControl()->getValue(), allowed ? -0.25f : 0.f);
        QCOMPARE(m_finder->bone("lEar")->getZPosControl()->getValue(), 0.75f); // not of the 26
        QCOMPARE(m_finder->bone("hip")->getYPosControl()->getValue(), 10.f);
        QVERIFY(!isStatusMessageShown());
    }

    void translationsOfLockedPartsStay()
    {
        pluginSettings().allowTranslations = false;
        pluginSettings().partLocks[LockLower] = true;
        clearAllLocks(m_finder->figure);
        const QList<QByteArray> entries = QList<QByteArray>() << valueEntry("/lShin:?translation/x",
                                              "0.5") << valueEntry("/lHand:?translation/x", "0.5");
        m_finder->memorize(PoseValues(), entries);
        m_finder->addFile("a.duf", PoseValues(), kFemaleCode, entries);
        m_finder->browse(AllPoses);
        m_finder->apply(0);
        QCOMPARE(m_finder->bone("lShin")->getXPosControl()->getValue(), 0.5f);
        QCOMPARE(m_finder->bone("lHand")->getXPosControl()->getValue(), 0.f);
    }
};

QUILLON_TEST(TestBrowseOptions)
#include "test_browse_options.moc"
