// main.cpp - the catalogue's entry: locale and platform come before Qt.
#include "catalogue/catalogue_options.h"
#include "catalogue/catalogue_run.h"
#include "catalogue/picture_worker.h"
#include "host/driver/quiet_platform.h"
#include "host/driver/utf8_locale.h"

#include <QApplication>
#include <QFile>

#include <cstdio>

using namespace quillon;

int main(int argc, char** argv)
{
    useUtf8Locale();
    useQuietPlatform();
    int qtArgc = 1; // the options are ours, not Qt's
    QApplication application(qtArgc, argv);
    QApplication::setApplicationName("quillon-catalogue");
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QFile::decodeName(argv[i]);
    CatalogueOptions options;
    QString why;
    if (!readCatalogueOptions(arguments, &options, &why)) {
        std::fprintf(stderr, "quillon-catalogue: %s; see --help\n", why.toUtf8().constData());
        return kExitRefused;
    }
    if (options.help) {
        std::fputs(catalogueHelp().toUtf8().constData(), stdout);
        return 0;
    }
    return options.worker ? runPictureWorker() : runCatalogue(options);
}
