// What is drawn where a picture, or the room for it, is missing.
#include "room_tests.h"
#include "scene_fixture.h"

#include "art/atlas_table.h"
#include "finder/browse_session.h"
#include "ground/live_panes.h"
#include "ground/plugin_settings.h"
#include "ground/qt_compat.h"
#include "pane/artwork.h"
#include "pane/info_banner.h"
#include "pane/page_painter.h"
#include "pane/page_state.h"
#include "pane/scaled_artwork.h"

#include <QImage>
#include <QPainter>
#include <QtTest>

using namespace quillon;

static const QSize kPane(256, 512);
static const int kFirstButton = 0;

class TestMissingArtwork : public QObject {
    Q_OBJECT

private:
    static QImage painted()
    {
        QImage image(kPane, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::red);
        QPainter painter(&image);
        paintPage(&painter, kPane);
        return image;
    }
    static bool drawsSomething(const QRect& rect, int button)
    {
        QImage image(kPane, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::red);
        const QImage before = image;
        QPainter painter(&image);
        drawArtwork(&painter, rect, button);
        return image != before;
    }

private slots:
    void init();
    void cleanup();
    void withoutPicturesAPageHasItsTexts();
    void aPieceNeedsPictureAndRoom();
    void aPlaceWithoutADeviceHasPlainPixels();
    void withoutAPaneNoNoticeIsTimed();
};

void TestMissingArtwork::init()
{
    pageState() = PageState();
    browseSession() = BrowseSession();
    pluginSettings() = PluginSettings();
    decodeArtwork();
    dropScaledArtwork();
}

void TestMissingArtwork::cleanup()
{
    dropScaledArtwork();
    releasePageArtwork();
}

void TestMissingArtwork::withoutPicturesAPageHasItsTexts()
{
    const QImage whole = painted();
    releasePageArtwork();
    dropScaledArtwork();
    const QImage bare = painted();
    QVERIFY(bare != whole);
    const QRgb ground = bare.pixel(0, 0);
    QVERIFY(ground != QColor(Qt::red).rgba());
    bool hasText = false;
    for (int y = 0; y < bare.height() && !hasText; ++y)
        for (int x = 0; x < bare.width() && !hasText; ++x)
            hasText = bare.pixel(x, y) != ground;
    QVERIFY(hasText);
}

void TestMissingArtwork::aPieceNeedsPictureAndRoom()
{
    const QRect room(10, 10, 40, 40), noWidth(10, 10, 0, 40);
    QVERIFY(drawsSomething(room, kFirstButton));
    QVERIFY(!drawsSomething(room, -7)); // no button's number
    QVERIFY(!drawsSomething(noWidth, kFirstButton));
    releasePageArtwork();
    dropScaledArtwork();
    QVERIFY(!drawsSomething(room, kFirstButton));
}

void TestMissingArtwork::aPlaceWithoutADeviceHasPlainPixels()
{
    QCOMPARE(pixelRatio(nullptr), 1.0);
}

// A session script may call what a pane does before there is one.
void TestMissingArtwork::withoutAPaneNoNoticeIsTimed()
{
    QVERIFY(!paneTimers().banner);
    hideBanner();
    startBanner();
    bannerTimerFired();
    QVERIFY(isBannerVisible());
    bannerSeen();
    QVERIFY(isBannerVisible());
    hideBanner();
}

QUILLON_TEST(TestMissingArtwork)
#include "test_missing_artwork.moc"
