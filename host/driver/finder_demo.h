// finder_demo.h - the demo with content: a figure, the plug-in's pane and its pose finder, driven
// from outside by presses on what the pane shows. It scans the content, walks through every
// category, and takes pictures of some of the poses of each. Writes into the home
//     contact-sheet.png   one row for each category: pictures with the names of the poses
//     report.txt          counts for each phase of the scan and for each category, and where the
//                         presets went that are not indexed
// The figure is the selected one, else a Genesis8Female. A memorized reference pose is replaced.
#pragma once

#include "host/driver/contact_sheet.h"

#include <QStringList>

namespace quillon {

struct DemoResult {
    QList<SheetRow> rows;
    QStringList report;
};

// False: it cannot be shown. *why is empty when there is simply nothing to show (no such pane, or
// no pose was found), else what went wrong.
bool runFinderDemo(const QStringList& content, DemoResult* result, QString* why);

} // namespace quillon
