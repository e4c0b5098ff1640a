#include "frame_fixture.h"
#include "room_tests.h"

#include "pane/dzquillonpane.h"
#include "plugin/class_factories.h"
#include "plugin/dzquillonpaneaction.h"
#include "plugin/plugin_definition.h"
#include "plugin/quillonaboutaction.h"

#include "dzclassfactory.h"
#include "dzerclink.h"
#include "dzplugin.h"

#include <QScriptEngine>
#include <QtTest>

Q_DECLARE_METATYPE(DzQuillonPane*)
Q_DECLARE_METATYPE(DzQuillonPaneAction*)
Q_DECLARE_METATYPE(QuillonAboutAction*)

struct ExpectedFactory {
    const char* className;
    const char* baseName;
    const char* guid;
};
// The host stores the GUIDs. A change here breaks the windows that users have arranged.
static const ExpectedFactory kExpected[] = {
    {"DzQuillonPane", "DzPane", "5d0c7b1e-93a4-4f6b-8f0a-2c6e41b7d913"},
    {"DzQuillonPaneAction", "DzPaneAction", "c2f4a86d-1b57-4e39-a0d8-7f95be34c620"},
    {"QuillonAboutAction", "DzAction", "8e61d3f9-47c2-4ab5-b9e7-06d28f5a1c74"},
};

class Sided : public DzERCLink {
    Q_OBJECT
    Q_ENUMS(Side)
public:
    enum Side { LeftSide = 3, RightSide = 5 };
};

class TestClassFactories : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> m_host;
    std::unique_ptr<QScriptEngine> m_engine;

    static DzClassFactory* factory(int i)
    {
        return getPluginDefinition()->getClassFactory(i);
    }
    static void registerAll(QScriptEngine* engine)
    {
        for (int i = 0; i < 3; ++i)
            factory(i)->registerClass(engine);
    }
    static void addRows()
    {
        QTest::addColumn<int>("row");
        for (int i = 0; i < 3; ++i)
            QTest::newRow(kExpected[i].className) << i;
    }
    QString evaluate(const QString& program)
    {
        return m_engine->evaluate(program).toString();
    }

private slots:
    void init()
    {
        m_host.reset(new HostFixture);
        m_engine.reset(new QScriptEngine);
    }
    void cleanup()
    {
        m_engine.reset();
        m_host.reset();
    }

    void thereIsOneFactoryForEachClass_data()
    {
        addRows();
    }
    void thereIsOneFactoryForEachClass()
    {
        QFETCH(int, row);
        const DzClassFactory* made = factory(row);
        QCOMPARE(getPluginDefinition()->getNumClassFactories(), 3);
        QCOMPARE(made->className(), QString(kExpected[row].className));
        QCOMPARE(made->metaObject()->superClass()->className(), kExpected[row].baseName);
        QCOMPARE(made->getGuid().toString(), QString(kExpected[row].guid));
    }

    void createsInstancesThatTheCallerOwns_data()
    {
        addRows();
    }
    void createsInstancesThatTheCallerOwns()
    {
        QFETCH(int, row);
        std::unique_ptr<QObject> first(factory(row)->createInstance());
        std::unique_ptr<QObject> second(factory(row)->createInstance(QVariantList() << 1 << "x"));
        QVERIFY(first && second && first != second);
        QCOMPARE(first->metaObject()->className(), kExpected[row].className);
        QCOMPARE(second->metaObject()->className(), kExpected[row].className);
        QVERIFY(!first->parent());
    }

    void paneActionIsBoundToThePane()
    {
        const DzQuillonPaneAction action;
        QCOMPARE(action.getPaneClassName(), QString("DzQuillonPane"));
    }

    void paneHasThreeSlotsInOrderAndNoSignals()
    {
        const QMetaObject& meta = DzQuillonPane::staticMetaObject;
        const int own = meta.methodOffset();
        QCOMPARE(meta.methodCount() - own, 3);
        const char* const expected[] = {"visibilityDidChange(bool)", "toolTipsTextTimerUpdate()",
            "infoBannerShowTimerUpdate()"};
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(int(meta.method(own + i).methodType()), int(QMetaMethod::Slot));
            QCOMPARE(meta.indexOfSlot(expected[i]), own + i);
        }
        QCOMPARE(meta.propertyCount(), DzPane::staticMetaObject.propertyCount());
    }

    void actionsAddNoMembersToTheirMetaObjects()
    {
        QCOMPARE(QuillonAboutAction::staticMetaObject.methodCount(),
            DzAction::staticMetaObject.methodCount());
        QCOMPARE(DzQuillonPaneAction::staticMetaObject.methodCount(),
            DzPaneAction::staticMetaObject.methodCount());
    }

    void scriptsKnowNothingBeforeTheRegistration_data()
    {
        addRows();
    }
    void scriptsKnowNothingBeforeTheRegistration()
    {
        QFETCH(int, row);
        QCOMPARE(evaluate(QString("typeof ") + kExpected[row].className), QString("undefined"));
    }

    void scriptsConstructThroughTheFactory_data()
    {
        addRows();
    }
    void scriptsConstructThroughTheFactory()
    {
        QFETCH(int, row);
        registerAll(m_engine.get());
        QCOMPARE(factory(row)->getScriptEngine(), m_engine.get()); // the base class's part
        const QScriptValue made
            = m_engine->evaluate(QString("new %1()").arg(kExpected[row].className));
        std::unique_ptr<QObject> object(made.toQObject());
        QVERIFY2(object.get(), qPrintable(made.toString()));
        QCOMPARE(object->metaObject()->className(), kExpected[row].className);
    }

    void theConstructorWrapsTheMetaObject()
    {
        registerAll(m_engine.get());
        const QScriptValue wrapper = m_engine->globalObject().property("DzQuillonPane");
        QVERIFY(wrapper.isQMetaObject());
        QVERIFY(wrapper.toQMetaObject() == &DzQuillonPane::staticMetaObject);
    }

    void theGlobalKeepsTheFlagsItHad()
    {
        QScriptValue global = m_engine->newObject(); // the engine's own drops flags
        global.setProperty("QuillonAboutAction", QScriptValue(1), QScriptValue::SkipInEnumeration);
        m_engine->setGlobalObject(global);
        registerAll(m_engine.get());
        QVERIFY(global.property("QuillonAboutAction").isQMetaObject());
        QCOMPARE(
            int(global.propertyFlags("QuillonAboutAction")), int(QScriptValue::SkipInEnumeration));
        QCOMPARE(int(global.propertyFlags("DzQuillonPane")), 0);
    }

    void pointersPassBothWays()
    {
        registerAll(m_engine.get());
        QuillonAboutAction about;
        const QScriptValue wrapped = qScriptValueFromValue(m_engine.get(), &about);
        QVERIFY(wrapped.toQObject() == &about);
        QVERIFY(qscriptvalue_cast<QuillonAboutAction*>(wrapped) == &about);
        QVERIFY(!qscriptvalue_cast<DzQuillonPane*>(wrapped)); // of another class
        QVERIFY(!qscriptvalue_cast<QuillonAboutAction*>(QScriptValue(3)));
    }

    void registeringAgainKeepsTheIdsOfThePointerTypes()
    {
        registerAll(m_engine.get());
        int ids[3];
        for (int i = 0; i < 3; ++i) {
            ids[i] = QMetaType::type(QByteArray(kExpected[i].className) + '*');
            QVERIFY(ids[i] != 0);
        }
        QScriptEngine other;
        registerAll(&other);
        registerAll(m_engine.get());
        for (int i = 0; i < 3; ++i)
            QCOMPARE(QMetaType::type(QByteArray(kExpected[i].className) + '*'), ids[i]);
    }

    void withoutAFactoryTheConstructorYieldsNothing()
    {
        {
            QuillonAboutActionFactory gone("00000000-0000-0000-0000-000000000001");
            gone.registerClass(m_engine.get());
        }
        QVERIFY(!m_engine->evaluate("QuillonAboutAction()").isValid());
        QVERIFY(!m_engine->hasUncaughtException());
        registerAll(m_engine.get());
        const std::unique_ptr<QObject> made(
            m_engine->evaluate("new QuillonAboutAction()").toQObject());
        QVERIFY(made.get());
    }

    void objectsReachScriptsAfterTheFactorysEnd()
    {
        {
            const QuillonAboutActionFactory factory("8e61d3f9-47c2-4ab5-b9e7-06d28f5a1c74");
            factory.registerClass(m_engine.get());
        }
        QuillonAboutAction action;
        const QScriptValue value = m_engine->toScriptValue<QuillonAboutAction*>(&action);
        QCOMPARE(value.toQObject(), static_cast<QObject*>(&action));
    }

    void enumKeysOfAClassAreReadOnlyNumbers()
    {
        const QScriptValue object = m_engine->newObject();
        m_engine->globalObject().setProperty("Sided", object);
        setEnumKeys(Sided::staticMetaObject, object);
        QCOMPARE(evaluate("Sided.LeftSide + ',' + Sided.RightSide"), QString("3,5"));
        QCOMPARE(evaluate("Sided.LeftSide = 7; delete Sided.RightSide;"
                          "Sided.LeftSide + ',' + Sided.RightSide"),
            QString("3,5"));
        QCOMPARE(evaluate("'ERCDeltaAdd0' in Sided"), QString("false")); // the base class's
    }

    void scriptsMakeAndDeleteASecondPane()
    {
        registerAll(m_engine.get());
        DzQuillonPane first;
        const QScriptValue made = m_engine->evaluate("pane = new DzQuillonPane(); pane");
        QPointer<QObject> second = made.toQObject();
        QVERIFY(second && second != &first);
        m_engine->evaluate("pane.deleteLater()");
        QVERIFY(!m_engine->hasUncaughtException());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!second);
    }
};

QUILLON_TEST(TestClassFactories)
#include "test_class_factories.moc"
