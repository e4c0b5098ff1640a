// picture_worker.h - a process that makes pictures for another one: it reads jobs from stdin, one a
// line, and answers each by a line on stdout, until stdin ends. A preset that ends the process
// costs its own picture only.
#pragma once

#include "catalogue/picture_store.h"

#include <QByteArray>

namespace quillon {

// A line without its end, and back; false for one that is no job.
QByteArray jobLine(const PictureJob&);
bool readJobLine(const QByteArray& line, PictureJob*);

const char kPictureMade[] = "made";
const char kPictureFailed[] = "failed";

// The exit code. Needs a QApplication.
int runPictureWorker();

} // namespace quillon
