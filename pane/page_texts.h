// page_texts.h - the lines that the browsing page shows about the search and the current pose.
// Owns: nothing. Read only.
#pragma once

#include <QString>
#include <QStringList>

namespace quillon {

// "NO MATCHING POSES FOUND", "MATCHING POSES FOUND: 12", "MATCHING POSE 3 of 12", "POSE 3 of 40".
QString counterText();

// The current pose's name, then further lines about its product; empty without a current pose.
QStringList poseLabelLines();

// Deletes what product file names say about mirroring: "sit (mirrored)" -> "sit".
QString withoutMirrorWords(const QString& title);

} // namespace quillon
