// catalogue_run.h - makes a catalogue, from the scan to the page.
// Order: scan; catalogue.json and the page without pictures, so that a run which is ended leaves a
// catalogue that the next one goes on with; pictures; both again with them.
#pragma once

namespace quillon {

struct CatalogueOptions;

const int kExitFailed = 1;
const int kExitRefused = 2; // nothing was written

// The exit code; what went wrong stands on stderr. Needs a QApplication.
int runCatalogue(const CatalogueOptions&);

} // namespace quillon
