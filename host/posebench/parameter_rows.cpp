#include "host/posebench/parameter_rows.h"

#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dznode.h"
#include "dzobject.h"

#include <algorithm>
#include <cmath>

namespace quillon {

static const float kWidestRange = 2000; // wider ones mean "unlimited"
static const float kFallbackSpan = 2; // of a bar, around 0, without a usable range

namespace {

struct Found {
    QString heading, label;
    DzFloatProperty* property;
};

} // namespace

static QString headingOf(const DzProperty* property)
{
    if (!property->getPath().isEmpty())
        return property->getPath();
    for (const char* word : {"Translate", "Rotate", "Scale"})
        if (property->getName().endsWith(QLatin1String(word)))
            return "Transforms";
    return "General";
}

static std::vector<Found> allProperties(const DzNode* node)
{
    std::vector<Found> found;
    for (int i = 0; i < node->getNumProperties(); ++i) {
        auto* property = qobject_cast<DzFloatProperty*>(node->getProperty(i));
        if (property && !property->isHidden())
            found.push_back({headingOf(property), property->getLabel(), property});
    }
    const DzObject* object = node->getObject();
    for (int i = 0; object && i < object->getNumModifiers(); ++i)
        if (auto* morph = qobject_cast<DzMorph*>(object->getModifier(i)))
            found.push_back(
                {headingOf(morph->getValueChannel()), morph->getLabel(), morph->getValueChannel()});
    return found;
}

static bool matches(const Found& found, const QString& filter)
{
    return filter.isEmpty() || found.label.contains(filter, Qt::CaseInsensitive)
        || found.heading.contains(filter, Qt::CaseInsensitive)
        || found.property->getName().contains(filter, Qt::CaseInsensitive);
}

std::vector<ParameterRow> parameterRows(
    const DzNode* node, const QString& filter, const QSet<QString>& folded)
{
    std::vector<ParameterRow> rows;
    if (!node)
        return rows;
    const std::vector<Found> all = allProperties(node);
    QStringList headings;
    for (const Found& found : all)
        if (matches(found, filter) && !headings.contains(found.heading))
            headings << found.heading;
    for (const QString& heading : std::as_const(headings)) {
        ParameterRow top;
        top.text = heading;
        top.folded = filter.isEmpty() && folded.contains(heading);
        rows.push_back(top);
        for (const Found& found : all)
            if (!top.folded && found.heading == heading && matches(found, filter))
                rows.push_back({found.label, found.property, false});
    }
    return rows;
}

// ---- geometry ------------------------------------------------------------------------------

int rowHeight(const ParameterRow& row)
{
    return row.property ? kSliderHeightPx : kHeadingHeightPx;
}

RowCells rowCells(const QRect& row)
{
    const int top = row.top() + 4;
    const int line = 18;
    const int icon = 18;
    const int valueWidth = 64;
    const int right = row.right() - 7;
    RowCells cells;
    cells.limit = QRect(right - icon, top, icon, line);
    cells.lock = cells.limit.translated(-icon - 3, 0);
    cells.value = QRect(cells.lock.left() - valueWidth - 4, top, valueWidth, line);
    cells.label = QRect(row.left() + 10, top, cells.value.left() - row.left() - 14, line);
    cells.bar = QRect(row.left() + 10, top + line + 4, right - row.left() - 10, 8);
    return cells;
}

RowPart partAt(const ParameterRow& row, const QRect& rect, const QPoint& px)
{
    if (!rect.contains(px))
        return NoPart;
    if (!row.property)
        return HeadingPart;
    const RowCells cells = rowCells(rect);
    if (cells.value.contains(px))
        return ValuePart;
    if (cells.lock.contains(px))
        return LockPart;
    if (cells.limit.contains(px))
        return LimitPart;
    if (cells.bar.adjusted(-2, -3, 2, 5).contains(px))
        return BarPart;
    return LabelPart;
}

// ---- values --------------------------------------------------------------------------------

bool hasUsableRange(const DzFloatProperty* property)
{
    const float span = property->getMax() - property->getMin();
    return span > 0 && span <= kWidestRange;
}

float barShare(const DzFloatProperty* property, float value)
{
    const float low = hasUsableRange(property) ? property->getMin() : -kFallbackSpan / 2;
    const float span = hasUsableRange(property) ? property->getMax() - low : kFallbackSpan;
    // Unlimited values approach the ends of the bar without reaching them.
    const float shown = hasUsableRange(property) ? value : value / (100.f + std::fabs(value));
    return std::min(1.f, std::max(0.f, (shown - low) / span));
}

float barValue(const DzFloatProperty* property, float share)
{
    return property->getMin() + share * (property->getMax() - property->getMin());
}

QString valueText(const DzFloatProperty* property)
{
    return QString::number(property->getValue(), 'f', property->getSensitivity() < 0.05f ? 3 : 2);
}

QString rowTip(const DzFloatProperty* property, RowPart part)
{
    if (part == LockPart)
        return QObject::tr(property->isLocked() ? "Locked: takes no value" : "Not locked");
    if (part == LimitPart)
        return QObject::tr(
            property->isClamped() ? "Limits in force: %1 to %2" : "No limits (%1 to %2)")
            .arg(property->getMin())
            .arg(property->getMax());
    return QObject::tr("%1, %2 to %3")
        .arg(property->getName())
        .arg(property->getMin())
        .arg(property->getMax());
}

} // namespace quillon
