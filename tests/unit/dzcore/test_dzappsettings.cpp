// Host settings: kept at once, typed, by group and path, and harmless without an application.
#include "frame_fixture.h"
#include "room_tests.h"

#include "dzappsettings.h"

#include <QScopedPointer>
#include <QSettings>
#include <QtTest>

class TestDzAppSettings : public QObject {
    Q_OBJECT
private slots:
    void readsBackEveryType();
    void isOnDiskWhenTheCallReturns();
    void absentValuesGiveTheDefault();
    void valuesOfAnotherTypeGiveTheDefault();
    void groupsDoNotMix();
    void pathsNestAndStopAtTheGroup();
    void removesValues();
    void keepsTextAsItIs_data();
    void keepsTextAsItIs();
    void withoutAnApplicationNothingHappens();
    void withoutASettingsFileNothingIsKept();
    void aHomeThatCannotBeWrittenIsNoCrash();
};

void TestDzAppSettings::readsBackEveryType()
{
    HostFixture host;
    DzAppSettings settings("Test");
    settings.setBoolValue("flag", true);
    settings.setIntValue("count", -7);
    settings.setFloatValue("factor", 0.1);
    settings.setStringValue("text", "words");
    settings.setColorValue("colour", QColor(1, 2, 3, 128));
    bool ok = false;
    QCOMPARE(settings.getBoolValue("flag", false, &ok), true);
    QVERIFY(ok);
    QCOMPARE(settings.getIntValue("count", 0, &ok), -7);
    QVERIFY(ok);
    QVERIFY(settings.getFloatValue("factor", 0, &ok) == 0.1); // exact: 17 digits are kept
    QVERIFY(ok);
    QCOMPARE(settings.getStringValue("text", QString(), &ok), QString("words"));
    QVERIFY(ok);
    QCOMPARE(settings.getColorValue("colour", QColor(), &ok).rgba(), qRgba(1, 2, 3, 128));
    QVERIFY(ok);
}

void TestDzAppSettings::isOnDiskWhenTheCallReturns()
{
    HostFixture host;
    DzAppSettings settings("QUILLON_settings");
    settings.setBoolValue("docked", true);
    QVERIFY(fileBytes(host.home.path("settings.ini")).contains("[QUILLON_settings]\ndocked=true"));
    DzAppSettings other("QUILLON_settings");
    QVERIFY(other.getBoolValue("docked"));
}

void TestDzAppSettings::absentValuesGiveTheDefault()
{
    HostFixture host;
    DzAppSettings settings("Test");
    bool ok = true;
    QCOMPARE(settings.getBoolValue("absent", true, &ok), true);
    QVERIFY(!ok);
    QCOMPARE(settings.getIntValue("absent", 5), 5);
    QCOMPARE(settings.getFloatValue("absent", 2.5), 2.5);
    QCOMPARE(settings.getStringValue("absent", "d"), QString("d"));
    QCOMPARE(settings.getColorValue("absent", Qt::red), QColor(Qt::red));
    QVERIFY(!settings.containsValue("absent"));
    QVERIFY2(!QFile::exists(host.home.path("settings.ini")), "reading has written the file");
}

void TestDzAppSettings::valuesOfAnotherTypeGiveTheDefault()
{
    HostFixture host;
    DzAppSettings settings("Test");
    settings.setStringValue("text", "12 monkeys");
    bool ok = true;
    QCOMPARE(settings.getIntValue("text", 3, &ok), 3);
    QVERIFY(!ok);
    QCOMPARE(settings.getBoolValue("text", true, &ok), true);
    QVERIFY(!ok);
    QCOMPARE(settings.getFloatValue("text", 1.5, &ok), 1.5);
    QVERIFY(!ok);
    QCOMPARE(settings.getColorValue("text", Qt::blue, &ok), QColor(Qt::blue));
    QVERIFY(!ok);
}

void TestDzAppSettings::groupsDoNotMix()
{
    HostFixture host;
    DzAppSettings one("One"), two("Two"), top;
    one.setIntValue("n", 1);
    two.setIntValue("n", 2);
    QCOMPARE(one.getIntValue("n"), 1);
    QCOMPARE(two.getIntValue("n"), 2);
    QVERIFY(!top.containsValue("n"));
    QCOMPARE(top.getIntValue("One/n"), 1);
}

void TestDzAppSettings::pathsNestAndStopAtTheGroup()
{
    HostFixture host;
    DzAppSettings settings("Group");
    settings.pushPath("a");
    settings.pushPath("b");
    settings.setIntValue("n", 1);
    settings.popPath();
    settings.setIntValue("n", 2);
    for (int i = 0; i < 5; ++i)
        settings.popPath();
    settings.setIntValue("n", 3);
    DzAppSettings top;
    QCOMPARE(top.getIntValue("Group/a/b/n"), 1);
    QCOMPARE(top.getIntValue("Group/a/n"), 2);
    QCOMPARE(top.getIntValue("Group/n"), 3);
}

void TestDzAppSettings::removesValues()
{
    HostFixture host;
    DzAppSettings settings("Test");
    settings.setIntValue("n", 1);
    settings.setIntValue("m", 2);
    settings.removeValue("n");
    QVERIFY(!settings.containsValue("n"));
    QVERIFY(settings.containsValue("m"));
    QVERIFY(!fileBytes(host.home.path("settings.ini")).contains("n=1"));
    settings.removeValue(QString()); // not the whole group
    QVERIFY(settings.containsValue("m"));
}

void TestDzAppSettings::keepsTextAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString("");
    QTest::newRow("commas") << QString("a, b,c");
    QTest::newRow("quotes and backslash") << QString("say \"C:\\x\"");
    QTest::newRow("beyond Latin-1") << QString::fromUtf8("\xe6\x97\xa5\xe6\x9c\xac");
    QTest::newRow("two lines") << QString("one\ntwo");
}

void TestDzAppSettings::keepsTextAsItIs()
{
    QFETCH(QString, text);
    HostFixture host;
    DzAppSettings settings("Test");
    settings.setStringValue("text", text);
    QSettings file(host.home.path("settings.ini"), QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    QCOMPARE(file.value("Test/text").toString(), text);
    bool ok = false;
    QCOMPARE(settings.getStringValue("text", "d", &ok), text);
    QVERIFY(ok);
}

void TestDzAppSettings::withoutAnApplicationNothingHappens()
{
    QVERIFY(!dzApp);
    DzAppSettings settings("Test");
    settings.setBoolValue("flag", true);
    bool ok = true;
    QCOMPARE(settings.getBoolValue("flag", false, &ok), false);
    QVERIFY(!ok);
    settings.removeValue("flag");
    QVERIFY(!settings.containsValue("flag"));
}

void TestDzAppSettings::withoutASettingsFileNothingIsKept()
{
    DzApp app((DzAppSetup()));
    DzAppSettings settings("Test");
    settings.setIntValue("n", 1);
    QCOMPARE(settings.getIntValue("n", 8), 8);
}

void TestDzAppSettings::aHomeThatCannotBeWrittenIsNoCrash()
{
    TempFolder folder;
    writeFile(folder.path("home"), "a file where a folder should be");
    DzAppSetup setup;
    setup.settingsFile = folder.path("home/settings.ini");
    DzApp app(setup);
    DzAppSettings settings("Test");
    settings.setIntValue("n", 1);
    QCOMPARE(fileBytes(folder.path("home")), QByteArray("a file where a folder should be"));
}

QUILLON_TEST(TestDzAppSettings)
#include "test_dzappsettings.moc"
