// page_data.h - the catalogue as the page reads it: a script that sets one variable, since a page
// that is opened from disk may read no other file. Columns instead of rows, as they are short.
#pragma once

#include "catalogue/catalogue_contents.h"

#include <QByteArray>

namespace quillon {

// The text of catalogue-data.js. Names are in it as JSON strings without "<".
QByteArray pageData(const CatalogueContents&, bool isComplete);

} // namespace quillon
