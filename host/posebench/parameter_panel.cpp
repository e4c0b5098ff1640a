#include "host/posebench/parameter_panel.h"

#include "host/posebench/dark_theme.h"

#include "dzfloatproperty.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>

using namespace quillon;

static DzNode* shownNode()
{
    return dzScene ? dzScene->getPrimarySelection() : nullptr;
}

DzParameterList::DzParameterList(QWidget* parent)
    : QAbstractScrollArea(parent)
    , m_knownProperties(0)
    , m_dragRow(-1)
    , m_dragX(0)
    , m_currentRow(-1)
    , m_editor(new QLineEdit(viewport()))
    , m_editedRow(-1)
{
    setObjectName("parameterList");
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setSingleStep(kSliderHeightPx / 2);
    m_editor->hide();
    m_editor->setAlignment(Qt::AlignRight);
    m_editor->setTextMargins(0, 0, 0, 0);
    m_editor->setStyleSheet("padding: 0 2px;");
    m_editor->installEventFilter(this);
    connect(m_editor, SIGNAL(editingFinished()), SLOT(takeTypedValue()));
    connect(verticalScrollBar(), SIGNAL(valueChanged(int)), m_editor, SLOT(hide()));
    connect(dzScene, SIGNAL(primarySelectionChanged(DzNode*)), SLOT(rebuild()));
    connect(dzScene, SIGNAL(sceneChanged()), SLOT(refresh()));
    connect(dzScene, SIGNAL(timeChanged(DzTime)), SLOT(refresh()));
    rebuild();
}

int DzParameterList::propertyCount() const
{
    const DzNode* node = shownNode();
    if (!node)
        return 0;
    const DzObject* object = node->getObject();
    return node->getNumProperties() + (object ? object->getNumModifiers() : 0);
}

void DzParameterList::setFilter(const QString& text)
{
    m_filter = text.trimmed();
    rebuild();
}

void DzParameterList::rebuild()
{
    m_editor->hide();
    m_dragRow = -1;
    m_knownProperties = propertyCount();
    m_rows = parameterRows(shownNode(), m_filter, m_folded);
    m_currentRow = std::min(m_currentRow, int(m_rows.size()) - 1);
    updateRange();
    viewport()->update();
}

void DzParameterList::refresh()
{
    if (propertyCount() != m_knownProperties)
        rebuild();
    viewport()->update();
}

// ---- rows ----------------------------------------------------------------------------------

void DzParameterList::updateRange()
{
    int height = 0;
    for (const ParameterRow& row : m_rows)
        height += rowHeight(row);
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
}

void DzParameterList::resizeEvent(QResizeEvent*)
{
    updateRange();
}

QRect DzParameterList::rowRect(int index) const
{
    int top = -verticalScrollBar()->value();
    for (int i = 0; i < index; ++i)
        top += rowHeight(m_rows[i]);
    return QRect(0, top, viewport()->width(), rowHeight(m_rows[index]));
}

int DzParameterList::rowAt(const QPoint& px, RowPart* part) const
{
    int top = -verticalScrollBar()->value();
    for (int i = 0; i < int(m_rows.size()); ++i) {
        const QRect rect(0, top, viewport()->width(), rowHeight(m_rows[i]));
        *part = partAt(m_rows[i], rect, px);
        if (*part != NoPart)
            return i;
        top += rect.height();
    }
    return -1;
}

// ---- painting ------------------------------------------------------------------------------

static void paintHeading(QPainter* painter, const ParameterRow& row, const QRect& rect)
{
    painter->fillRect(rect.adjusted(0, 1, 0, -1), kTheme.panel);
    painter->setPen(kTheme.dimText);
    const QString mark = QString::fromUtf8(row.folded ? "\xE2\x96\xB8  " : "\xE2\x96\xBE  ");
    painter->drawText(rect.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft,
        mark + QString(row.text).replace('/', QString::fromUtf8(" \xE2\x80\xBA ")));
}

static void paintBar(QPainter* painter, const DzFloatProperty* property, const QRect& bar)
{
    const float zero = barShare(property, 0);
    const float share = barShare(property, property->getValue());
    painter->setPen(Qt::NoPen);
    painter->setBrush(kTheme.field.darker(115));
    painter->drawRoundedRect(bar, 3, 3);
    const qreal from = bar.left() + bar.width() * std::min(zero, share);
    const qreal to = bar.left() + bar.width() * std::max(zero, share);
    painter->setBrush(property->isLocked() ? kTheme.line : kTheme.bar);
    painter->drawRoundedRect(QRectF(from, bar.top(), std::max(2.0, to - from), bar.height()), 3, 3);
    painter->setBrush(property->isLocked() ? kTheme.dimText.darker(140) : kTheme.text);
    const qreal knob = bar.left() + (bar.width() - 4) * share;
    painter->drawRoundedRect(QRectF(knob, bar.top() - 2, 4, bar.height() + 4), 2, 2);
}

static void paintPadlock(QPainter* painter, const QRect& cell, bool locked)
{
    const QColor color = locked ? kTheme.locked : kTheme.line.lighter(120);
    const QPoint c = cell.center();
    painter->setPen(QPen(color, 1.4));
    painter->setBrush(Qt::NoBrush);
    painter->drawArc(QRect(c.x() - (locked ? 3 : 0), c.y() - 6, 6, 8), 0, 180 * 16);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color);
    painter->drawRoundedRect(QRect(c.x() - 4, c.y() - 1, 9, 7), 1.5, 1.5);
}

static void paintLimits(QPainter* painter, const QRect& cell, bool clamped)
{
    const QColor color = clamped ? kTheme.accent : kTheme.line.lighter(120);
    const QPoint c = cell.center();
    painter->setPen(QPen(color, 1.6));
    painter->drawLine(c + QPoint(-5, -4), c + QPoint(-5, 5));
    painter->drawLine(c + QPoint(5, -4), c + QPoint(5, 5));
    painter->drawLine(c + QPoint(clamped ? -3 : -1, 0), c + QPoint(clamped ? 3 : 1, 0));
}

static void paintSlider(QPainter* painter, const ParameterRow& row, const QRect& rect)
{
    const DzFloatProperty* property = row.property;
    const RowCells cells = rowCells(rect);
    QColor text = property->isLocked() ? kTheme.dimText : kTheme.text;
    painter->setPen(text);
    const QString label = painter->fontMetrics().elidedText(
        row.text + (property->hasControllers() ? " *" : ""), Qt::ElideRight, cells.label.width());
    painter->drawText(cells.label, Qt::AlignVCenter | Qt::AlignLeft, label);
    if (property->hasKeys())
        text = kTheme.accent;
    painter->setPen(text);
    painter->drawText(cells.value, Qt::AlignVCenter | Qt::AlignRight, valueText(property));
    paintPadlock(painter, cells.lock, property->isLocked());
    paintLimits(painter, cells.limit, property->isClamped());
    paintBar(painter, property, cells.bar);
}

void DzParameterList::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), kTheme.window);
    painter.setRenderHint(QPainter::Antialiasing);
    int top = -verticalScrollBar()->value();
    for (const ParameterRow& row : m_rows) {
        const QRect rect(0, top, viewport()->width(), rowHeight(row));
        top += rect.height();
        if (rect.bottom() < 0 || rect.top() > viewport()->height())
            continue;
        if (row.property)
            paintSlider(&painter, row, rect);
        else if (rect.height() == kHeadingHeightPx)
            paintHeading(&painter, row, rect);
        if (hasFocus() && &row == m_rows.data() + m_currentRow)
            paintFocusFrame(&painter, rect);
    }
    if (m_rows.empty() && !m_filter.isEmpty() && shownNode())
        paintNote(&painter, viewport()->rect(), tr("No parameter of that name"));
}

// ---- mouse ---------------------------------------------------------------------------------

static void setUndoably(DzFloatProperty* property, float value)
{
    DzUndoStackHold hold;
    property->setValue(value);
    hold.accept(QString("Change %1").arg(property->getLabel()));
}

static void toggleFlag(DzFloatProperty* property, RowPart part)
{
    DzUndoStackHold hold;
    if (part == LockPart)
        property->lock(!property->isLocked());
    else
        property->setIsClamped(!property->isClamped());
    hold.accept(QString(part == LockPart ? "Lock %1" : "Limits of %1").arg(property->getLabel()));
}

static float keyStep(const DzFloatProperty* property, int key, Qt::KeyboardModifiers modifiers)
{
    const float step = property->getSensitivity() * (modifiers & Qt::ShiftModifier ? 10 : 1);
    return key == Qt::Key_Left ? -step : step;
}

void DzParameterList::mousePressEvent(QMouseEvent* event)
{
    RowPart part;
    const int row = rowAt(event->pos(), &part);
    m_editor->hide();
    if (row < 0 || event->button() != Qt::LeftButton)
        return;
    m_currentRow = row;
    DzFloatProperty* property = m_rows[row].property;
    if (part == HeadingPart) {
        foldOrUnfold(row);
    } else if (part == LockPart || part == LimitPart) {
        toggleFlag(property, part);
    } else if (part == ValuePart) {
        startTyping(row);
    } else if (part == BarPart && !property->isLocked()) {
        dzUndoStack->beginHold();
        m_dragRow = row;
        m_dragX = event->pos().x();
        if (hasUsableRange(property))
            dragTo(event->pos().x());
    }
}

void DzParameterList::dragTo(int x)
{
    DzFloatProperty* property = m_rows[m_dragRow].property;
    if (!property)
        return;
    const QRect bar = rowCells(rowRect(m_dragRow)).bar;
    if (hasUsableRange(property)) {
        const float share = float(x - bar.left()) / std::max(1, bar.width());
        property->setValue(barValue(property, std::min(1.f, std::max(0.f, share))));
    } else {
        property->setValue(property->getValue() + (x - m_dragX) * property->getSensitivity());
    }
    m_dragX = x;
}

void DzParameterList::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragRow >= 0)
        dragTo(event->pos().x());
}

void DzParameterList::mouseReleaseEvent(QMouseEvent*)
{
    if (m_dragRow < 0)
        return;
    const DzFloatProperty* property = m_rows[m_dragRow].property;
    dzUndoStack->accept(tr("Change %1").arg(property ? property->getLabel() : QString()));
    m_dragRow = -1;
}

void DzParameterList::mouseDoubleClickEvent(QMouseEvent* event)
{
    RowPart part;
    const int row = rowAt(event->pos(), &part);
    if (row >= 0 && (part == BarPart || part == LabelPart))
        setUndoably(m_rows[row].property, m_rows[row].property->getDefaultValue());
    else
        mousePressEvent(event);
}

void DzParameterList::foldOrUnfold(int row)
{
    const QString heading = m_rows[row].text;
    if (!m_folded.remove(heading))
        m_folded.insert(heading);
    rebuild();
}

void DzParameterList::startTyping(int row)
{
    const DzFloatProperty* property = m_rows[row].property;
    if (property->isLocked())
        return;
    m_editedRow = row;
    m_editor->setGeometry(rowCells(rowRect(row)).value.adjusted(-2, -1, 2, 1));
    m_editor->setText(QString::number(property->getValue()));
    m_editor->selectAll();
    m_editor->show();
    m_editor->setFocus();
}

// Nobody types from here on; a row, or -1 when nobody did.
int DzParameterList::endTyping()
{
    const int row = m_editor->isVisible() ? m_editedRow : -1;
    m_editedRow = -1; // a focus that leaves the field comes here, too
    if (m_editor->hasFocus())
        setFocus(Qt::OtherFocusReason);
    m_editor->hide();
    return row < int(m_rows.size()) ? row : -1;
}

// These keys end in the field; from there they would go on to the list.
bool DzParameterList::eventFilter(QObject* watched, QEvent* event)
{
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (watched != m_editor
        || (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Escape))
        return QAbstractScrollArea::eventFilter(watched, event);
    if (key == Qt::Key_Escape)
        endTyping();
    else
        takeTypedValue();
    return true;
}

void DzParameterList::takeTypedValue()
{
    bool ok = false;
    const float value = m_editor->text().toFloat(&ok);
    const int row = endTyping();
    if (ok && row >= 0 && m_rows[row].property)
        setUndoably(m_rows[row].property, value);
}

// ---- keys ----------------------------------------------------------------------------------

void DzParameterList::makeCurrent(int row)
{
    if (m_rows.empty())
        return;
    m_currentRow = std::min(std::max(0, row), int(m_rows.size()) - 1);
    const QRect rect = rowRect(m_currentRow);
    QScrollBar* bar = verticalScrollBar();
    if (rect.top() < 0)
        bar->setValue(bar->value() + rect.top());
    else if (rect.bottom() >= viewport()->height())
        bar->setValue(bar->value() + rect.bottom() + 1 - viewport()->height());
    viewport()->update();
}

bool DzParameterList::moveCurrent(int key)
{
    const int page = std::max(1, viewport()->height() / kSliderHeightPx - 1);
    switch (key) {
    case Qt::Key_Up:
        makeCurrent(m_currentRow - 1);
        return true;
    case Qt::Key_Down:
        makeCurrent(m_currentRow + 1);
        return true;
    case Qt::Key_PageUp:
        makeCurrent(m_currentRow - page);
        return true;
    case Qt::Key_PageDown:
        makeCurrent(m_currentRow + page);
        return true;
    case Qt::Key_Home:
        makeCurrent(0);
        return true;
    case Qt::Key_End:
        makeCurrent(int(m_rows.size()) - 1);
        return true;
    default:
        return false;
    }
}

bool DzParameterList::changeCurrent(int key, Qt::KeyboardModifiers modifiers)
{
    if (m_currentRow < 0 || m_currentRow >= int(m_rows.size()))
        return false;
    DzFloatProperty* property = m_rows[m_currentRow].property;
    const bool types = key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool steps = key == Qt::Key_Left || key == Qt::Key_Right;
    if (!property && (types || steps || key == Qt::Key_Space))
        foldOrUnfold(m_currentRow);
    else if (!property)
        return false;
    else if (types)
        startTyping(m_currentRow);
    else if (key == Qt::Key_L || key == Qt::Key_C)
        toggleFlag(property, key == Qt::Key_L ? LockPart : LimitPart);
    else if (steps && !property->isLocked())
        setUndoably(property, property->getValue() + keyStep(property, key, modifiers));
    else
        return steps;
    return true;
}

void DzParameterList::keyPressEvent(QKeyEvent* event)
{
    const bool plain = !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    if (!plain || !(moveCurrent(event->key()) || changeCurrent(event->key(), event->modifiers())))
        event->ignore(); // the keys of the menus are not ours
}

void DzParameterList::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    const bool byKey
        = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKey && m_currentRow < 0)
        makeCurrent(m_rows.size() > 1 ? 1 : 0); // the first slider, below its heading
    viewport()->update();
}

void DzParameterList::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

bool DzParameterList::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const QHelpEvent* help = static_cast<QHelpEvent*>(event);
    RowPart part;
    const int row = rowAt(help->pos(), &part);
    if (row >= 0 && m_rows[row].property)
        QToolTip::showText(help->globalPos(), rowTip(m_rows[row].property, part), viewport());
    else
        QToolTip::hideText();
    return true;
}

// ---- the pane ------------------------------------------------------------------------------

DzParametersPane::DzParametersPane()
    : DzPane(tr("Parameters"))
    , m_title(new QLabel)
{
    QLineEdit* search = new QLineEdit;
    search->setPlaceholderText(tr("Find a parameter"));
    search->setClearButtonEnabled(true);
    DzParameterList* list = new DzParameterList;
    QVBoxLayout* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 0);
    layout->setSpacing(5);
    layout->addWidget(m_title);
    layout->addWidget(search);
    layout->addWidget(list, 1);
    connect(search, SIGNAL(textChanged(QString)), list, SLOT(setFilter(QString)));
    connect(dzScene, SIGNAL(primarySelectionChanged(DzNode*)), SLOT(showTitle()));
    connect(dzScene, SIGNAL(sceneChanged()), SLOT(showTitle()));
    showTitle();
}

void DzParametersPane::showTitle()
{
    const DzNode* node = shownNode();
    m_title->setText(node ? QString("<b>%1</b>").arg(node->getLabel().toHtmlEscaped())
                          : tr("Nothing is selected"));
}
