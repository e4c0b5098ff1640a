// json_text.h - JSON text as QVariant: objects become QVariantMap, arrays QVariantList, numbers
// double. The one place that depends on the toolkit's generation.
// Input: UTF-8. Errors: false and *why as "line L: text"; *out is then untouched.
#pragma once

#include <QString>
#include <QVariant>

namespace quillon {

bool parseJson(const QByteArray& text, QVariant* out, QString* why);

} // namespace quillon
