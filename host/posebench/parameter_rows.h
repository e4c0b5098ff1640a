// parameter_rows.h - which sliders a node has, and where the parts of a row lie.
#pragma once

#include <QPointer>
#include <QRect>
#include <QSet>
#include <QString>

#include <vector>

class DzFloatProperty;
class DzNode;

namespace quillon {

struct ParameterRow {
    QString text; // heading or label
    QPointer<DzFloatProperty> property; // null: a heading
    bool folded = false; // of a heading
};

// Grouped under headings in the order in which they first occur. Rows match when label, heading or
// name contains the filter; a filter unfolds everything.
std::vector<ParameterRow> parameterRows(
    const DzNode* node, const QString& filter, const QSet<QString>& folded);

const int kHeadingHeightPx = 24;
const int kSliderHeightPx = 40;
int rowHeight(const ParameterRow& row);

enum RowPart { NoPart, HeadingPart, LabelPart, ValuePart, LockPart, LimitPart, BarPart };

struct RowCells {
    QRect label, value, lock, limit, bar;
};
RowCells rowCells(const QRect& row);
RowPart partAt(const ParameterRow& row, const QRect& rect, const QPoint& px);

// Share of the bar, 0..1, and back. A channel without a usable range is dragged by steps instead.
bool hasUsableRange(const DzFloatProperty* property);
float barShare(const DzFloatProperty* property, float value);
float barValue(const DzFloatProperty* property, float share);

QString valueText(const DzFloatProperty* property);
QString rowTip(const DzFloatProperty* property, RowPart part);

} // namespace quillon
