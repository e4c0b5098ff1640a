// catalogue_options.h - what the user asks of the catalogue on the command line.
#pragma once

#include <QString>
#include <QStringList>

namespace quillon {

struct CatalogueOptions {
    bool help = false;
    bool worker = false; // a helper process that makes pictures (picture_worker.h)
    QString output; // folder that is written to; absolute
    QStringList content; // directories to scan, in this order; absolute
    QString home; // of posebench, whose ranks are shown; empty: none
    QString figure = QStringLiteral("Genesis8Female"); // that the scan tries the poses on
    int workers = 0; // processes that make pictures; 0: one a core
};

// False with *why as "text" when the arguments make no sense, a directory does not exist or the
// home has no data folder.
bool readCatalogueOptions(const QStringList& arguments, CatalogueOptions*, QString* why);

QString catalogueHelp();

} // namespace quillon
