#include "pane/page_painter.h"

#include "art/atlas_table.h"
#include "finder/browse_session.h"
#include "ground/plugin_settings.h"
#include "ground/status_message.h"
#include "ground/version_text.h"
#include "pane/button_state.h"
#include "pane/hover.h"
#include "pane/info_banner.h"
#include "pane/page_layout.h"
#include "pane/page_texts.h"
#include "pane/scaled_artwork.h"
#include "pane/text_fit.h"
#include "services/update_notice.h"

#include <QPainter>

#include <iterator>

namespace quillon {

namespace {

const QColor kGround = QColor::fromRgb(kArtColourGround);
const QColor kText(192, 192, 192);
const QColor kQuietText(128, 128, 128); // on the ground or the panels only

// Canvas units, clear of every button.
const ArtPlace kCounterPlace = {96, 700, 392, 34};
const ArtPlace kLabelPlace = {96, 736, 392, 68};
const ArtPlace kVersionPlace = {24, 986, 170, 26};
const ArtPlace kCategoryPlace = {202, 430, 112, 112}; // which poses are browsed, between the arrows

const int kTipLines = 6; // the longest tip
const char kWidestTip[] = "(will be used as a reference by some";
const char kWidestCounter[] = "MATCHING POSE 65536 of 65536";
const char kLinkCaption[] = "Visit the Quillon web page";
const char kNoticeCaption[] = "Latest updates and more:\r\nsee the plugin web page";

// A place inside a button's picture, grown with it.
QRect innerRect(const QSize& pane, const ButtonRow& row, const ArtPlace& inner)
{
    const QRect drawn = drawnRect(pane, row, hoverPosition());
    const double sx = double(drawn.width()) / row.w, sy = double(drawn.height()) / row.h;
    return QRect(drawn.left() + int(inner.x * sx), drawn.top() + int(inner.y * sy),
        int(inner.w * sx), int(inner.h * sy));
}

QString textAreaText()
{
    return isStatusMessageShown() ? statusMessage() : hoverTip();
}

void paintNotice(QPainter* painter, const QSize& pane, const ButtonRow& banner)
{
    drawArtwork(painter, innerRect(pane, banner, kNoticePlace), kArtNotice);
    const ArtPlace inner = {kNoticePlace.x + kNoticeTextPlace.x,
        kNoticePlace.y + kNoticeTextPlace.y, kNoticeTextPlace.w, kNoticeTextPlace.h};
    const QRect rect = innerRect(pane, banner, inner);
    const QImage& picture = updatePicture();
    if (picture.isNull()) {
        drawTextLines(painter, rect, splitLines(QLatin1String(kNoticeCaption)), kText, TextFit());
        return;
    }
    QSize size = picture.size();
    size.scale(rect.size(), Qt::KeepAspectRatio);
    QRect fitted(QPoint(), size);
    fitted.moveCenter(rect.center());
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(fitted, picture);
}

void paintTextArea(QPainter* painter, const QSize& pane)
{
    TextFit fit;
    fit.lines = kTipLines;
    fit.widest = QLatin1String(kWidestTip);
    fit.wrap = true;
    drawTextLines(
        painter, canvasRect(pane, kHeaderTextPlace), splitLines(textAreaText()), kText, fit);
}

void paintLink(QPainter* painter, const QSize& pane, const ButtonRow& row)
{
    const int low = buttonState(row);
    drawArtwork(painter, drawnRect(pane, row, hoverPosition()), row.number, low);
    TextFit fit;
    fit.lines = low ? 3 : 5;
    drawTextLines(painter, innerRect(pane, row, low ? kLinkLowTextPlace : kLinkTextPlace),
        splitLines(QLatin1String(kLinkCaption)), kText, fit);
}

void paintVersion(QPainter* painter, const QSize& pane)
{
    TextFit fit;
    fit.align = Qt::AlignLeft;
    drawTextLines(painter, canvasRect(pane, kVersionPlace),
        QStringList(QString::fromLatin1("Quillon v") + versionText()), kQuietText, fit);
}

void paintBodyAreas(QPainter* painter, const QSize& pane)
{
    drawArtwork(painter, canvasRect(pane, kBodyPlace), kArtBody);
    for (const ButtonRow* row : pageButtons(BrowsingPage))
        if (row->look == Look::Square)
            drawArtwork(
                painter, drawnRect(pane, *row, hoverPosition()), kArtBodyArea, buttonState(*row));
}

void paintSearch(QPainter* painter, const QSize& pane)
{
    if (areasShown())
        paintBodyAreas(painter, pane);
    else
        drawArtwork(
            painter, canvasRect(pane, kCategoryPlace), FirstCategoryButton + browseSession().type);
    TextFit counter;
    counter.widest = QLatin1String(kWidestCounter);
    drawTextLines(
        painter, canvasRect(pane, kCounterPlace), QStringList(counterText()), kText, counter);
    TextFit label;
    label.lines = 3;
    label.wrap = true;
    label.align = Qt::AlignHCenter | Qt::AlignTop;
    drawTextLines(painter, canvasRect(pane, kLabelPlace), poseLabelLines(), kText, label);
}

// From the last one on, so that the button that wins a press lies on top.
void paintButtons(QPainter* painter, const QSize& pane, Page page)
{
    const std::vector<const ButtonRow*> rows = pageButtons(page);
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        if ((*row)->look < Look::Square)
            drawArtwork(painter, drawnRect(pane, **row, hoverPosition()), (*row)->number,
                buttonState(**row));
}

} // namespace

QString pageText(PageText which)
{
    const bool browses = currentPage() == BrowsingPage;
    switch (which) {
    case CounterText:
        return browses ? counterText() : QString();
    case PoseText:
        return browses ? poseLabelLines().join(QLatin1String(", ")) : QString();
    case MessageText:
        break;
    }
    return isStatusMessageShown() ? statusMessage().simplified() : QString();
}

QRect pageTextRect(const QSize& pane, PageText which)
{
    return canvasRect(pane,
        which == CounterText    ? kCounterPlace
            : which == PoseText ? kLabelPlace
                                : kHeaderTextPlace);
}

// Status message before tip before notice.
bool isNoticeShown()
{
    return isBannerVisible() && !pluginSettings().muteUpdateNotice && textAreaText().isEmpty();
}

void paintPage(QPainter* painter, const QSize& pane)
{
    keepArtworkFor(pane);
    const Page page = currentPage();
    painter->fillRect(QRect(QPoint(), pane), kGround);
    const ButtonRow& banner = *buttonOf(page, BannerButton);
    drawArtwork(painter, drawnRect(pane, banner, hoverPosition()), BannerButton);
    paintLink(painter, pane, *buttonOf(page, LinkButton));
    if (page == BrowsingPage)
        paintSearch(painter, pane);
    paintButtons(painter, pane, page);
    if (isNoticeShown())
        paintNotice(painter, pane, banner);
    else
        paintTextArea(painter, pane);
    paintVersion(painter, pane);
}

} // namespace quillon
