#include "frame_fixture.h"
#include "room_tests.h"
#include "scene_fixture.h"

#include "ground/backup_folder.h"
#include "ground/data_folder.h"
#include "ground/file_lock.h"
#include "ground/plugin_settings.h"

#include <QtTest>

#include <cstring>

using namespace quillon;

// The file of version 3 as it is laid out, worked out by hand: first byte, width of each value,
// number of values, whether they are flags, and the version that brought the field.
struct LaidOut {
    const char* name;
    int at;
    int width;
    int count;
    bool flag;
    int since;
};
// clang-format off
static const LaidOut kLayout[] = {
    {"first similarity set",     4, 1, 10, true,  1},
    {"female",                  14, 1,  1, true,  2},
    {"male",                    15, 1,  1, true,  2},
    {"current rank",            16, 4,  1, false, 1},
    {"part locks",              20, 1,  6, true,  3},
    {"second similarity set",   26, 1, 10, true,  1},
    {"rank filter",             36, 4,  1, false, 1},
    {"prop origin",             40, 4,  1, false, 1},
    {"translation nudge",       44, 4,  1, false, 1},
    {"pose violation",          48, 1,  1, true,  1},
    {"face violation",          49, 1,  1, true,  1},
    {"translations",            50, 1,  1, true,  1},
    {"ignore pairs",            51, 1,  1, true,  1},
    {"no notices",              52, 1,  1, true,  1},
    {"reserved",                53, 1,  1, true,  1},
    {"current pose",            54, 4,  1, false, 1},
};
// clang-format on

static const int kFileBytes = 58;
static const int kReservedAt = 53;

static QByteArray fromHex(const char* text)
{
    return QByteArray::fromHex(text);
}

// What a fresh set-up saves.
static QByteArray defaultBytes()
{
    return fromHex("03000000"
                   "01000001010000000001"
                   "01 01"
                   "00000000"
                   "000000000000"
                   "01000001010000000001"
                   "0f000000"
                   "00000000"
                   "0000003f"
                   "01 00 01 00 00"
                   "01"
                   "ffffffff");
}

// Every field differs from its default, and flags are not written as 0 or 1.
static QByteArray strangeBytes()
{
    return fromHex("03000000"
                   "00ff8001000240fe0700"
                   "00 00"
                   "02000000"
                   "01ff02800309"
                   "00010203040506070800"
                   "f9ffffff"
                   "03000000"
                   "0000e0c0"
                   "00 07 00 ff 10"
                   "00"
                   "15cd5b07");
}

static QByteArray normalised(QByteArray file)
{
    for (const LaidOut& field : kLayout) {
        for (int i = 0; field.flag && i < field.count; ++i)
            file[field.at + i] = file.at(field.at + i) ? 1 : 0;
    }
    file[kReservedAt] = 1;
    return file;
}

class TestPluginSettings : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> m_host;

    // Loads the bytes over defaults and saves what came of it.
    QByteArray loadAndSave(const QByteArray& file)
    {
        pluginSettings() = PluginSettings();
        writeFile(dataFiles().settings, file);
        if (!loadSettings())
            return QByteArray();
        QFile::remove(dataFiles().settings);
        return saveSettings() ? fileBytes(dataFiles().settings) : QByteArray();
    }

private slots:
    void init()
    {
        m_host.reset(new HostFixture);
        locateDataFiles();
        pluginSettings() = PluginSettings();
    }
    void cleanup()
    {
        m_host.reset();
    }

    void layoutHasNoGapAndNoOverlap()
    {
        int at = 4;
        for (const LaidOut& field : kLayout) {
            QVERIFY2(field.at == at, field.name);
            at += field.width * field.count;
        }
        QCOMPARE(at, kFileBytes);
    }

    void defaultsAreWrittenByteForByte()
    {
        QVERIFY(saveSettings());
        QCOMPARE(fileBytes(dataFiles().settings).toHex(), defaultBytes().toHex());
        QCOMPARE(filesIn(dataFiles().folder).size(), 1);
    }

    // One field at a time: exactly its own bytes change.
    void everyFieldHasItsBytes()
    {
        typedef void (*Change)(PluginSettings&);
        static const Change kChanges[] = {
            [](PluginSettings& s) { s.similarity[AreaHip] = false; },
            [](PluginSettings& s) { s.includeFemale = false; },
            [](PluginSettings& s) { s.includeMale = false; },
            [](PluginSettings& s) { s.currentRank = 0x01020304; },
            [](PluginSettings& s) { s.partLocks[5] = true; },
            [](PluginSettings& s) { s.similarityCopy[AreaTorso] = false; },
            [](PluginSettings& s) { s.rankFilter = -2; },
            [](PluginSettings& s) { s.propOrigin = 3; },
            [](PluginSettings& s) { s.translationNudge = -7.0f; },
            [](PluginSettings& s) { s.allowPoseViolation = false; },
            [](PluginSettings& s) { s.allowFaceViolation = true; },
            [](PluginSettings& s) { s.allowTranslations = false; },
            [](PluginSettings& s) { s.ignorePosePairs = true; },
            [](PluginSettings& s) { s.muteUpdateNotice = true; },
            [](PluginSettings&) {},
            [](PluginSettings& s) { s.currentPose = 123456789; },
        };
        static const struct {
            int at;
            const char* bytes;
        } kExpected[] = {{13, "00"}, {14, "00"}, {15, "00"}, {16, "04030201"}, {25, "01"},
            {26, "00"}, {36, "feffffff"}, {40, "03000000"}, {44, "0000e0c0"}, {48, "00"},
            {49, "01"}, {50, "00"}, {51, "01"}, {52, "01"}, {53, "01"}, {54, "15cd5b07"}};
        for (int i = 0; i < 16; ++i) {
            pluginSettings() = PluginSettings();
            kChanges[i](pluginSettings());
            QVERIFY(saveSettings());
            QByteArray expected = defaultBytes();
            const QByteArray bytes = fromHex(kExpected[i].bytes);
            expected.replace(kExpected[i].at, bytes.size(), bytes);
            QCOMPARE(fileBytes(dataFiles().settings).toHex(), expected.toHex());
        }
    }

    void everySimilarityFlagAndLockHasItsByte()
    {
        for (int i = 0; i < kBodyAreaCount; ++i) {
            pluginSettings() = PluginSettings();
            pluginSettings().similarity[i] = !pluginSettings().similarity[i];
            QVERIFY(saveSettings());
            QByteArray expected = defaultBytes();
            expected[4 + i] = expected.at(4 + i) ? 0 : 1;
            QCOMPARE(fileBytes(dataFiles().settings).toHex(), expected.toHex());
        }
        for (int i = 0; i < kPartLockCount; ++i) {
            pluginSettings() = PluginSettings();
            pluginSettings().partLocks[i] = true;
            QVERIFY(saveSettings());
            QByteArray expected = defaultBytes();
            expected[20 + i] = 1;
            QCOMPARE(fileBytes(dataFiles().settings).toHex(), expected.toHex());
        }
    }

    void flagsOtherThanZeroReadAsOn()
    {
        QCOMPARE(loadAndSave(strangeBytes()).toHex(), normalised(strangeBytes()).toHex());
        const PluginSettings& s = pluginSettings();
        QVERIFY(!s.similarity[AreaTorso] && s.similarity[AreaLeftShin] && s.partLocks[5]);
        QVERIFY(!s.includeFemale && !s.includeMale && s.allowFaceViolation);
        QCOMPARE(s.currentRank, qint32(2));
        QCOMPARE(s.rankFilter, qint32(-7));
        QCOMPARE(s.translationNudge, -7.0f);
        QCOMPARE(s.currentPose, qint32(123456789));
    }

    void missingFileKeepsAllFieldsAndReportsIt()
    {
        pluginSettings().currentRank = 2;
        QVERIFY(!loadSettings());
        QCOMPARE(pluginSettings().currentRank, qint32(2));
    }

    // Versions below 4 are read; each lacks the fields that came after it.
    void olderVersionsReadTheirOwnFields_data()
    {
        QTest::addColumn<int>("version");
        QTest::newRow("version 3") << 3;
        QTest::newRow("version 2") << 2;
        QTest::newRow("version 1") << 1;
        QTest::newRow("version 0") << 0;
        QTest::newRow("negative") << -1;
        QTest::newRow("most negative") << int(0x80000000u);
    }
    void olderVersionsReadTheirOwnFields()
    {
        QFETCH(int, version);
        QByteArray file(reinterpret_cast<const char*>(&version), 4);
        QByteArray expected = normalised(strangeBytes());
        for (const LaidOut& field : kLayout) {
            const int bytes = field.width * field.count;
            if (field.since == 1 || version >= field.since)
                file += strangeBytes().mid(field.at, bytes);
            else
                expected.replace(field.at, bytes, defaultBytes().mid(field.at, bytes));
        }
        QCOMPARE(file.size(), version >= 3 ? 58 : version == 2 ? 52 : 50);
        QCOMPARE(loadAndSave(file).toHex(), expected.toHex());
    }

    void newerVersionsAreNotReadAndOverwritten_data()
    {
        QTest::addColumn<int>("version");
        QTest::newRow("version 4") << 4;
        QTest::newRow("far newer") << 0x7fffffff;
    }
    void newerVersionsAreNotReadAndOverwritten()
    {
        QFETCH(int, version);
        const QByteArray file
            = QByteArray(reinterpret_cast<const char*>(&version), 4) + strangeBytes().mid(4);
        QCOMPARE(loadAndSave(file).toHex(), defaultBytes().toHex());
    }

    // What is there overlays the defaults byte for byte; the load succeeds at every length.
    void fileCutAtEveryLengthKeepsWhatItLacks()
    {
        for (int length = 0; length <= kFileBytes; ++length) {
            const QByteArray expected
                = normalised(strangeBytes().left(length) + defaultBytes().mid(length));
            QByteArray got = loadAndSave(strangeBytes().left(length));
            QCOMPARE(got.size(), kFileBytes);
            QVERIFY2(got.toHex() == expected.toHex(), qPrintable(QString::number(length)));
        }
    }

    void bytesAfterTheLastFieldAreIgnored()
    {
        QCOMPARE(loadAndSave(strangeBytes() + "more").toHex(), normalised(strangeBytes()).toHex());
    }

    // ---- two hosts

    // Each host changes some flags and numbers of a file that both have read.
    void mergingEqualsTheLiteralForm()
    {
        Random random(6);
        for (int run = 0; run < 60; ++run) {
            QByteArray base = defaultBytes(), ours = base, theirs = base, expected = base;
            for (const LaidOut& field : kLayout) {
                for (int i = 0; i < field.count; ++i) {
                    const int at = field.at + i * field.width;
                    const bool weChange = random.below(3) == 0, theyChange = random.below(3) == 0;
                    if (at == 0 || at == kReservedAt)
                        continue;
                    const char other = field.flag ? char(1 - base.at(at)) : char(base.at(at) ^ 2);
                    ours[at] = weChange ? other : base.at(at);
                    theirs[at] = theyChange ? other : base.at(at);
                    expected[at] = weChange ? other : theirs.at(at);
                }
            }
            pluginSettings() = PluginSettings();
            writeFile(dataFiles().settings, ours);
            loadSettings();
            const PluginSettings ourSettings = pluginSettings();
            writeFile(dataFiles().settings, base);
            pluginSettings() = PluginSettings();
            loadSettings();
            pluginSettings() = ourSettings;
            writeFile(dataFiles().settings, theirs);
            QVERIFY(saveSettings());
            QCOMPARE(fileBytes(dataFiles().settings).toHex(), expected.toHex());
            writeFile(dataFiles().settings, theirs); // and now we have changed nothing
            QVERIFY(saveSettings());
            QCOMPARE(fileBytes(dataFiles().settings).toHex(), theirs.toHex());
        }
    }

    void thePositionOfTheOtherHostStaysUnlessWeMove()
    {
        const auto position = [] {
            qint32 number = 0;
            memcpy(&number, fileBytes(dataFiles().settings).constData() + 54, 4);
            return number;
        };
        pluginSettings().currentPose = 4;
        QVERIFY(saveSettings(3)); // the file's index has one entry less before it
        QCOMPARE(position(), qint32(3));
        QVERIFY(saveSettings(2)); // the other host has dropped one more
        QCOMPARE(position(), qint32(2));
        QByteArray theirs = fileBytes(dataFiles().settings);
        theirs[54] = 9;
        writeFile(dataFiles().settings, theirs);
        QVERIFY(saveSettings(2));
        QCOMPARE(position(), qint32(9));
        pluginSettings().currentPose = 5;
        QVERIFY(saveSettings(3));
        QCOMPARE(position(), qint32(3));
    }

    void aNewerFileIsCopiedFirst()
    {
        const QByteArray newer = QByteArray::fromHex("04000000") + "of tomorrow";
        writeFile(dataFiles().settings, newer);
        loadSettings();
        QVERIFY(saveSettings());
        QCOMPARE(fileBytes(dataFiles().settings).toHex(), defaultBytes().toHex());
        QCOMPARE(fileBytes(backupFolder() + filesIn(backupFolder()).value(0)), newer);
    }

    void aHostThatSavesMakesTheOtherWait()
    {
        QVERIFY(saveSettings());
        pluginSettings().propOrigin = 2;
        {
            const FileLock other(dataFiles().saveLock, 0);
            QVERIFY(!saveSettings());
            QCOMPARE(fileBytes(dataFiles().settings).toHex(), defaultBytes().toHex());
        }
        QVERIFY(saveSettings());
        QCOMPARE(int(fileBytes(dataFiles().settings).at(40)), 2);
        QCOMPARE(filesIn(dataFiles().folder).size(), 1); // and no lock
    }

    void theDefaultsAreTold()
    {
        pluginSettings().propOrigin = 2;
        QCOMPARE(defaultSettingsFile().toHex(), defaultBytes().toHex());
    }

    void nothingIsWrittenWithoutAFolder()
    {
        writeFile(m_host->home.path("data"), "in the way");
        QVERIFY(!saveSettings());
        QCOMPARE(fileBytes(m_host->home.path("data")), QByteArray("in the way"));
        QVERIFY(!loadSettings());
    }

    void aFolderInPlaceOfTheFileChangesNothing()
    {
        QDir().mkpath(dataFiles().settings);
        QVERIFY(!saveSettings());
        QVERIFY(!loadSettings());
        QVERIFY(QFileInfo(dataFiles().settings).isDir());
        QVERIFY(filesIn(dataFiles().folder).isEmpty());
    }
};

QUILLON_TEST(TestPluginSettings)
#include "test_plugin_settings.moc"
