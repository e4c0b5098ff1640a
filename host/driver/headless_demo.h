// headless_demo.h - what the program does by itself without a display and without a script.
// With content and a pane that browses it: finder_demo.h. Without, or when there is no pose in it,
// it shows every figure, each alone in the scene, and writes into the home
//     demo-<figure>.png   the viewport's picture
//     contact-sheet.png   all of them from several sides
//     report.txt          what the figures consist of, and how long it took
// The paths of the last two are printed. The scene is empty afterwards.
#pragma once

#include <QString>
#include <QStringList>

namespace quillon {

bool runHeadlessDemo(const QStringList& content, const QString& home, QString* why);

} // namespace quillon
