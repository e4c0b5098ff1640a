// catalogue_json.h - the catalogue as data for other programs: catalogue.json, whose fields are
// described in docs/catalogue.htm. One pose or file a line.
#pragma once

#include "catalogue/catalogue_contents.h"

#include <QByteArray>

namespace quillon {

// isComplete: every picture was made or given up.
QByteArray catalogueJson(const CatalogueContents&, bool isComplete);

const char* figureWord(quint32 figureCode); // "female" or "male"
const char* rankWord(int rank); // "unranked", "favourite", "hidden", "custom"
const char* categoryWord(int type); // "sitting" ... "upside-down"

} // namespace quillon
