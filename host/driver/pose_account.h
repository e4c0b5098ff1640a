// pose_account.h - where the presets of the content directories went in a scan: so many files, so
// many indexed, and why not the others. From what the scan told while it ran, and from reading the
// files once more. Owns: nothing.
#pragma once

#include "host/driver/scan_report.h"

namespace quillon {

struct PresetCounts {
    int files; // presets in the content directories
    int copies; // poses of a whole body with the same keys as another of them; one of each is none
};

PresetCounts countPresets(const QStringList& content);

// One reason a line, which together with the indexed poses come to all files. Empty when the phases
// are not those of a scan.
QStringList accountLines(const QList<PhaseCount>& phases, int indexed, const PresetCounts& counts);

} // namespace quillon
