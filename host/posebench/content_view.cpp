#include "host/posebench/content_view.h"

#include "host/posebench/dark_theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QTextLayout>

using namespace quillon;

static const int kTileWidthPx = 118;
static const int kPicturePx = 100; // both ways, at most
static const int kTileMarginPx = 4;
static const int kNameLines = 3;
static const int kBelowPx = 6; // between a name and the next picture

static QSize tileSize(const QFont& font)
{
    const int names = kNameLines * QFontMetrics(font).lineSpacing();
    return QSize(kTileWidthPx, kPicturePx + 3 * kTileMarginPx + names + kBelowPx);
}

ContentView::ContentView(QWidget* parent)
    : QListView(parent)
{
    setItemDelegate(new ContentTile(this));
    setFlow(LeftToRight);
    setWrapping(true);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setGridSize(tileSize(font()));
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

void ContentView::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        setGridSize(tileSize(font()));
}

void ContentView::setTextWhenEmpty(const QString& text)
{
    m_textWhenEmpty = text;
    viewport()->update();
}

QString ContentView::textWhenEmpty() const
{
    return m_textWhenEmpty;
}

void ContentView::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (!model() || model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    paintNote(&painter, viewport()->rect(), m_textWhenEmpty);
}

QStringList tileLines(const QString& name, const QFont& font, int widthPx, int mostLines)
{
    // Names of files have their words between underscores and hyphens as often as between blanks.
    const QChar mayBreak(0x200b);
    QString text = name;
    for (const char* sign : {"_", "-"})
        text.replace(QLatin1String(sign), QLatin1String(sign) + QString(mayBreak));
    QTextLayout layout(text, font);
    QTextOption wrap;
    wrap.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(wrap);
    layout.beginLayout();
    QStringList lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(widthPx);
        if (lines.size() + 1 == mostLines) { // the last one takes the rest
            lines << QFontMetrics(font).elidedText(
                text.mid(line.textStart()).remove(mayBreak), Qt::ElideRight, widthPx);
            break;
        }
        lines << text.mid(line.textStart(), line.textLength()).remove(mayBreak).trimmed();
    }
    layout.endLayout();
    return lines;
}

void ContentTile::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QRect tile
        = option.rect.adjusted(kTileMarginPx / 2, kTileMarginPx / 2, -kTileMarginPx / 2, 0);
    const bool selected = option.state & QStyle::State_Selected;
    if (selected)
        painter->fillRect(tile, kTheme.bar);
    const QPixmap picture = index.data(Qt::DecorationRole).value<QPixmap>();
    const QSize size = picture.size().width() > kPicturePx || picture.size().height() > kPicturePx
        ? picture.size().scaled(kPicturePx, kPicturePx, Qt::KeepAspectRatio)
        : picture.size();
    QRect place(QPoint(), size);
    place.moveCenter(QPoint(tile.center().x(), tile.top() + kTileMarginPx + kPicturePx / 2));
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawPixmap(place, picture);
    painter->setPen(selected ? QColor(Qt::white) : kTheme.text);
    const QRect names = tile.adjusted(2, kPicturePx + 2 * kTileMarginPx, -2, 0);
    const QStringList lines
        = tileLines(index.data().toString(), option.font, names.width(), kNameLines);
    painter->setFont(option.font);
    for (int i = 0; i < lines.size(); ++i)
        painter->drawText(names.adjusted(0, i * option.fontMetrics.lineSpacing(), 0, 0),
            Qt::AlignHCenter | Qt::AlignTop, lines[i]);
    if ((option.state & QStyle::State_HasFocus) && option.widget && option.widget->hasFocus())
        paintFocusFrame(painter, tile);
}

QSize ContentTile::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return tileSize(option.font);
}
