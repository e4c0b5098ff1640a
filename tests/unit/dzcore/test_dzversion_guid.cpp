// Versions and class identities: text to value and back, order.
#include "room_tests.h"

#include "dzguid.h"
#include "dzversion.h"

#include <QtTest>

class TestDzVersionGuid : public QObject {
    Q_OBJECT
private slots:
    void versionPacksFourPartsOf16Bits();
    void versionReadsText_data();
    void versionReadsText();
    void versionsCompareByParts();
    void guidReadsText_data();
    void guidReadsText();
    void guidsCompareByBytes();
};

void TestDzVersionGuid::versionPacksFourPartsOf16Bits()
{
    const DzVersion version(4, 5, 0, 100);
    QCOMPARE(version.getValue(), quint64(0x0004000500000064ULL));
    QCOMPARE(version.getValue(), quint64(DZ_MAKE_VERSION(4, 5, 0, 100)));
    QVERIFY(version == DzVersion(DZ_SDK_VERSION));
    QCOMPARE(version.getMajorVersion(), 4);
    QCOMPARE(version.getMinorVersion(), 5);
    QCOMPARE(version.getRevisionNumber(), 0);
    QCOMPARE(version.getBuildNumber(), 100);
    QCOMPARE(DzVersion(65535, 65535, 65535, 65535).toString(),
        QString::fromLatin1("65535.65535.65535.65535"));
}

void TestDzVersionGuid::versionReadsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read"); // empty: refused
    QTest::newRow("four parts") << "4.5.0.100"
                                << "4.5.0.100";
    QTest::newRow("one part") << "7"
                              << "7.0.0.0";
    QTest::newRow("largest part") << "1.65535"
                                  << "1.65535.0.0";
    QTest::newRow("part too large") << "1.65536"
                                    << "";
    QTest::newRow("six digits") << "000001.2"
                                << "";
    QTest::newRow("five parts") << "1.2.3.4.5"
                                << "";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("empty part") << "1..2"
                                << "";
    QTest::newRow("sign") << "+1.2"
                          << "";
    QTest::newRow("letters") << "4.5b"
                             << "";
}

void TestDzVersionGuid::versionReadsText()
{
    QFETCH(QString, text);
    QFETCH(QString, read);
    bool ok = read.isEmpty();
    const DzVersion version = DzVersion::fromString(text, &ok);
    QCOMPARE(ok, !read.isEmpty());
    QCOMPARE(version.toString(), read.isEmpty() ? QString::fromLatin1("0.0.0.0") : read);
}

void TestDzVersionGuid::versionsCompareByParts()
{
    QVERIFY(DzVersion(4, 5, 0, 100) < DzVersion(4, 10, 0, 0));
    QVERIFY(DzVersion(4, 5, 0, 101) > DzVersion(4, 5, 0, 100));
    QVERIFY(DzVersion(40000, 0, 0, 0) > DzVersion(4, 0, 0, 0)); // no sign in the highest part
    QVERIFY(DzVersion(1, 2, 3, 4) <= DzVersion(1, 2, 3, 4));
    QVERIFY(DzVersion(1, 2, 3, 4) != DzVersion(1, 2, 3, 5));
}

void TestDzVersionGuid::guidReadsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read"); // empty: null
    const QString plain = QString::fromLatin1("5d0c7b1e-93a4-4f6b-8f0a-2c6e41b7d913");
    QTest::newRow("plain") << plain << plain;
    QTest::newRow("upper case") << plain.toUpper() << plain;
    QTest::newRow("braces") << "{" + plain + "}" << plain;
    QTest::newRow("one brace") << "{" + plain << "";
    QTest::newRow("too short") << plain.left(35) << "";
    QTest::newRow("too long") << plain + "0"
                              << "";
    QTest::newRow("dash missing") << "5d0c7b1e093a4-4f6b-8f0a-2c6e41b7d913"
                                  << "";
    QTest::newRow("no digit") << "5g0c7b1e-93a4-4f6b-8f0a-2c6e41b7d913"
                              << "";
    QTest::newRow("dash for a digit") << "5-0c7b1e-93a4-4f6b-8f0a-2c6e41b7d913"
                                      << "";
    QTest::newRow("empty") << ""
                           << "";
}

void TestDzVersionGuid::guidReadsText()
{
    QFETCH(QString, text);
    QFETCH(QString, read);
    const DzGuid guid = DzGuid::fromString(text);
    QCOMPARE(guid.isNull(), read.isEmpty());
    if (!read.isEmpty())
        QCOMPARE(guid.toString(), read);
    QVERIFY(DzGuid::fromString(guid.toString()) == guid);
}

void TestDzVersionGuid::guidsCompareByBytes()
{
    const DzGuid a = DzGuid::fromString("00000000-0000-0000-0000-000000000001");
    const DzGuid b = DzGuid::fromString("ff000000-0000-0000-0000-000000000000");
    QVERIFY(a != b);
    QVERIFY(a < b);
    QVERIFY(!(b < a));
    QVERIFY(DzGuid() < a);
}

QUILLON_TEST(TestDzVersionGuid)
#include "test_dzversion_guid.moc"
