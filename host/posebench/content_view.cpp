#include "host/posebench/content_view.h"

#include "host/posebench/dark_theme.h"

#include <QKeyEvent>
#include <QPainter>

using namespace quillon;

static const QSize kTilePx(118, 150);
static const int kPicturePx = 100; // both ways, at most
static const int kMarginPx = 4;
static const int kNameLines = 2;

ContentView::ContentView(QWidget* parent)
    : QListView(parent)
{
    setItemDelegate(new ContentTile(this));
    setFlow(LeftToRight);
    setWrapping(true);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setGridSize(kTilePx);
    setVerticalScrollMode(ScrollPerPixel);
    setSelectionMode(ExtendedSelection);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    connect(this, SIGNAL(doubleClicked(QModelIndex)), SIGNAL(opened(QModelIndex)));
}

void ContentView::keyPressEvent(QKeyEvent* event)
{
    const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enters && currentIndex().isValid())
        emit opened(currentIndex());
    else if (event->key() == Qt::Key_Backspace)
        emit upWanted();
    else
        QListView::keyPressEvent(event);
}

// On two lines, as much of it as they hold.
static void paintName(
    QPainter* painter, const QFontMetrics& font, const QRect& place, const QString& name)
{
    const int flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWrapAnywhere;
    QString text = name;
    for (int width = kNameLines * place.width();
         font.boundingRect(place, flags, text).height() > place.height() && width > 0; width -= 8)
        text = font.elidedText(name, Qt::ElideMiddle, width);
    painter->drawText(place, flags, text);
}

void ContentTile::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QRect tile = option.rect.adjusted(kMarginPx / 2, kMarginPx / 2, -kMarginPx / 2, 0);
    const bool selected = option.state & QStyle::State_Selected;
    if (selected)
        painter->fillRect(tile, kTheme.bar);
    const QPixmap picture = index.data(Qt::DecorationRole).value<QPixmap>();
    const QSize size = picture.size().width() > kPicturePx || picture.size().height() > kPicturePx
        ? picture.size().scaled(kPicturePx, kPicturePx, Qt::KeepAspectRatio)
        : picture.size();
    QRect place(QPoint(), size);
    place.moveCenter(QPoint(tile.center().x(), tile.top() + kMarginPx + kPicturePx / 2));
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawPixmap(place, picture);
    painter->setPen(selected ? QColor(Qt::white) : kTheme.text);
    paintName(painter, option.fontMetrics, tile.adjusted(2, kPicturePx + 2 * kMarginPx, -2, 0),
        index.data().toString());
    if ((option.state & QStyle::State_HasFocus) && option.widget && option.widget->hasFocus())
        paintFocusFrame(painter, tile);
}

QSize ContentTile::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return kTilePx;
}
