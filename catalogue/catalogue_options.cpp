#include "catalogue/catalogue_options.h"

#include "host/figures/figure_data.h"

#include <QDir>
#include <QFileInfo>

namespace quillon {
namespace {

const char kHelp[]
    = R"(quillon-catalogue OUT --content DIR... - a page that shows every pose you own

Scans the content directories and writes OUT/index.htm, to be opened in any browser, and
OUT/catalogue.json, the same as data. Nothing else is changed. OUT is a new or empty folder, or
that of an earlier catalogue, whose pictures are used again where files have not changed.

  --content DIR    a content directory; may be given several times
  --home DIR       show the ranks (favourite, hidden) kept in this home of posebench
  --figure NAME    figure that the poses are tried on: %1
  --jobs N         processes that make pictures; one a core unless told
  --help           this text
)";

const int kMostWorkers = 64;

bool takeFolder(const QString& text, const char* option, QString* folder, QString* why)
{
    *folder = QDir::cleanPath(QFileInfo(text).absoluteFilePath());
    if (!text.isEmpty() && QFileInfo(*folder).isDir())
        return true;
    *why = QString("%1: there is no folder '%2'").arg(QString(option), text);
    return false;
}

bool takeHome(const QString& text, QString* home, QString* why)
{
    if (!takeFolder(text, "--home", home, why))
        return false;
    if (QFileInfo(*home + "/data").isDir())
        return true;
    *why = QString("--home: there is no folder 'data' in '%1'").arg(text);
    return false;
}

bool takeNumber(const QString& text, int* number, QString* why)
{
    bool isNumber = false;
    *number = text.toInt(&isNumber);
    if (isNumber && *number >= 1 && *number <= kMostWorkers)
        return true;
    *why = QString("--jobs is a number from 1 to %1, not '%2'").arg(kMostWorkers).arg(text);
    return false;
}

bool takeFigure(const QString& text, QString* figure, QString* why)
{
    *figure = text;
    if (figureNames().contains(text))
        return true;
    *why = QString("--figure: there is no figure '%1'").arg(text);
    return false;
}

bool takeOption(const QString& name, const QString& value, CatalogueOptions* o, QString* why)
{
    if (name == "--content") {
        o->content += QString();
        return takeFolder(value, "--content", &o->content.last(), why);
    }
    if (name == "--home")
        return takeHome(value, &o->home, why);
    if (name == "--figure")
        return takeFigure(value, &o->figure, why);
    if (name == "--jobs")
        return takeNumber(value, &o->workers, why);
    *why = QString("there is no option '%1'").arg(name);
    return false;
}

bool takeOutput(const QString& text, CatalogueOptions* o, QString* why)
{
    *why = QString("more than one folder to write to: '%1'").arg(text);
    if (!o->output.isEmpty())
        return false;
    why->clear();
    o->output = QDir::cleanPath(QFileInfo(text).absoluteFilePath());
    return true;
}

bool isComplete(const CatalogueOptions& o, QString* why)
{
    if (o.output.isEmpty())
        *why = "no folder to write to";
    else if (o.content.isEmpty())
        *why = "no content directory: --content DIR";
    return why->isEmpty();
}

} // namespace

bool readCatalogueOptions(const QStringList& arguments, CatalogueOptions* options, QString* why)
{
    *options = CatalogueOptions();
    why->clear();
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (argument == "--help" || argument == "--worker") {
            (argument == "--help" ? options->help : options->worker) = true;
            return true;
        }
        if (!argument.startsWith("--")) {
            if (!takeOutput(argument, options, why))
                return false;
        } else if (!takeOption(argument, arguments.value(++i), options, why)) {
            return false;
        }
    }
    return isComplete(*options, why);
}

QString catalogueHelp()
{
    return QString(kHelp).arg(figureNames().join(", "));
}

} // namespace quillon
