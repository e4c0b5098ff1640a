#include "host/driver/command_line.h"

#include "host/driver/call_table.h"
#include "host/figures/figure_data.h"

#include <QDir>
#include <QFileInfo>

namespace quillon {
namespace {

const int kHelpColumns = 100;

typedef bool (*TakeOption)(CommandLine*, const QString& value, QString* why);

struct OptionRow {
    const char* name;
    const char* value; // null: a switch
    TakeOption take;
    const char* help;
};

QString absolute(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

bool takeHome(CommandLine* c, const QString& value, QString* why)
{
    if (value.isEmpty()) {
        *why = QString("--home needs a folder");
        return false;
    }
    c->home = absolute(value);
    return true;
}

bool takeData(CommandLine* c, const QString& value, QString*)
{
    c->data = value;
    c->dataGiven = true;
    return true;
}

bool takeTemp(CommandLine* c, const QString& value, QString*)
{
    c->temp = value;
    c->tempGiven = true;
    return true;
}

bool takeContent(CommandLine* c, const QString& value, QString* why)
{
    if (!QFileInfo(value).isDir()) {
        *why = QString("content directory '%1' does not exist").arg(value);
        return false;
    }
    c->content.append(absolute(value));
    return true;
}

bool takePlugin(CommandLine* c, const QString& value, QString* why)
{
    if (!QFileInfo(value).isFile()) {
        *why = QString("plug-in file '%1' does not exist").arg(value);
        return false;
    }
    for (const QString& given : std::as_const(c->plugins))
        if (QFileInfo(given) == QFileInfo(value))
            return true; // it is loaded once
    c->plugins.append(absolute(value));
    return true;
}

bool takeFigure(CommandLine* c, const QString& value, QString* why)
{
    const QStringList known = figureNames();
    if (!known.contains(value)) {
        *why = QString("unknown figure '%1'; there are %2").arg(value, known.join(", "));
        return false;
    }
    c->figure = value;
    return true;
}

bool takeSelect(CommandLine* c, const QString& value, QString* why)
{
    c->select = value;
    if (value.isEmpty())
        *why = QString("--select needs the name of a node");
    return !value.isEmpty();
}

bool takeSize(CommandLine* c, const QString& value, QString* why)
{
    const QStringList parts = value.split('x');
    bool okW = false, okH = false;
    const int w = parts.value(0).toInt(&okW);
    const int h = parts.value(1).toInt(&okH);
    c->size = QSize(w, h);
    if (parts.size() == 2 && okW && okH && w >= 1 && h >= 1 && w <= 16384 && h <= 16384)
        return true;
    *why = QString("'%1' is no size; write it like 1280x960").arg(value);
    return false;
}

bool takeProxy(CommandLine* c, const QString& value, QString* why)
{
    const int colon = value.lastIndexOf(':');
    bool ok = false;
    const int port = value.mid(colon + 1).toInt(&ok);
    c->proxyHost = value.left(qMax(colon, 0));
    c->proxyPort = quint16(port);
    if (!c->proxyHost.isEmpty() && ok && port >= 1 && port <= 65535)
        return true;
    *why = QString("'%1' is no proxy; write it like 127.0.0.1:8080").arg(value);
    return false;
}

// CALL or CALL:N; a name holds no colon.
bool takeDieAt(CommandLine* c, const QString& value, QString* why)
{
    const QString name = value.section(':', 0, 0);
    bool isNumber = true;
    c->dieAtCall = 1;
    if (value.contains(':'))
        c->dieAtCall = value.section(':', 1).toInt(&isNumber);
    c->dieAt = findCall(name);
    if (value.isEmpty())
        *why = QString("--die-at needs the name of a host call");
    else if (!c->dieAt)
        *why = unknownCall(name);
    else if (!isNumber || c->dieAtCall < 1)
        *why = QString("'%1' tells no call; write it like %2:3").arg(value, name);
    return why->isEmpty();
}

bool takeScreenshot(CommandLine* c, const QString& value, QString* why)
{
    const QFileInfo file(value);
    c->screenshot = absolute(value);
    if (!value.isEmpty() && !file.isDir() && file.absoluteDir().exists())
        return true;
    *why = QString("screenshot '%1' cannot be written there").arg(value);
    return false;
}

bool takeScript(CommandLine* c, const QString& value, QString* why)
{
    if (!QFileInfo(value).isFile()) {
        *why = QString("script '%1' does not exist").arg(value);
        return false;
    }
    c->script = absolute(value);
    return true;
}

bool takeHeadless(CommandLine* c, const QString&, QString*)
{
    c->headless = true;
    return true;
}

bool takeNoPane(CommandLine* c, const QString&, QString*)
{
    c->noPane = true;
    return true;
}

bool takeHelp(CommandLine* c, const QString&, QString*)
{
    c->help = true;
    return true;
}

// clang-format off
const OptionRow kOptions[] = {
    {"--headless",   nullptr,     takeHeadless,   "no display; ends when the script ends, or runs the built-in demo"},
    {"--home",       "DIR",       takeHome,       "everything the program writes goes below this folder (else $QUILLON_HOME, else quillon-posebench in the user's data folder)"},
    {"--data",       "DIR",       takeData,       "data folder told to plug-ins (else HOME/data)"},
    {"--temp",       "DIR",       takeTemp,       "temporary folder told to plug-ins (else HOME/temp)"},
    {"--content",    "DIR",       takeContent,    "a content directory; give it again for more"},
    {"--plugin",     "FILE",      takePlugin,     "a plug-in to load instead of those of this build; again for more"},
    {"--no-pane",    nullptr,     takeNoPane,     "plug-ins' panes are not created at the start"},
    {"--figure",     "NAME",      takeFigure,     "a figure to load at the start"},
    {"--select",     "NODE",      takeSelect,     "a node to select at the start, by its name"},
    {"--size",       "WxH",       takeSize,       "size of the window in pixels"},
    {"--proxy",      "HOST:PORT", takeProxy,      "all HTTP goes there (headless without it: to a closed port)"},
    {"--die-at",     "CALL[:N]",  takeDieAt,      "ends at once, as a crash would, when a plug-in makes this call for the N-th time"},
    {"--screenshot", "FILE",      takeScreenshot, "writes a PNG of the window once it is shown"},
    {"--script",     "FILE",      takeScript,     "a script to run; everything after FILE are its arguments"},
    {"--help",       nullptr,     takeHelp,       "this text"},
};
// clang-format on

bool isPreset(const QString& argument)
{
    return !argument.startsWith('-') && argument.endsWith(".duf", Qt::CaseInsensitive);
}

bool takePreset(CommandLine* c, const QString& file, QString* why)
{
    if (!QFileInfo(file).isFile()) {
        *why = QString("pose preset '%1' does not exist").arg(file);
        return false;
    }
    c->presets.append(absolute(file));
    return true;
}

const OptionRow* findOption(const QString& name)
{
    for (const OptionRow& row : kOptions)
        if (name == QLatin1String(row.name))
            return &row;
    return nullptr;
}

bool readOptions(const QStringList& arguments, CommandLine* out, QString* why)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& name = arguments.at(i);
        const OptionRow* row = findOption(name);
        if (!row && isPreset(name)) {
            if (!takePreset(out, name, why))
                return false;
            continue;
        }
        if (!row) {
            *why = name.startsWith('-') ? QString("unknown option '%1'; see --help").arg(name)
                                        : QString("unexpected argument '%1'; see --help").arg(name);
            return false;
        }
        if (row->value && i + 1 == arguments.size()) {
            *why = QString("%1 needs a value: %1 %2").arg(name, QString(row->value));
            return false;
        }
        if (!row->take(out, row->value ? arguments.at(++i) : QString(), why))
            return false;
        if (row->take == takeScript) {
            out->scriptArgs = arguments.mid(i + 1);
            break;
        }
        if (row->take == takeHelp)
            break; // whatever follows, help was asked for
    }
    return true;
}

// The folder itself, or the nearest one above it that exists, has to be a folder.
bool canBeFolder(const QString& path, QString* obstacle)
{
    QString at = path;
    while (!QFileInfo::exists(at)) {
        const QString above = QFileInfo(at).path();
        if (above == at)
            break;
        at = above;
    }
    *obstacle = at;
    return QFileInfo(at).isDir();
}

} // namespace

static QString defaultHome()
{
    const QString given = qEnvironmentVariable("QUILLON_HOME");
    if (!given.isEmpty())
        return absolute(given);
    const QString data = qEnvironmentVariable("XDG_DATA_HOME");
    return (QDir::isAbsolutePath(data) ? data : QDir::homePath() + QString("/.local/share"))
        + QString("/quillon-posebench");
}

bool readCommandLine(const QStringList& arguments, CommandLine* out, QString* why)
{
    out->thumbnails = arguments == QStringList("--thumbnails"); // for the content library alone
    if (out->thumbnails)
        return true;
    if (!readOptions(arguments, out, why))
        return false;
    if (out->help)
        return true;
    if (out->home.isEmpty())
        out->home = defaultHome();
    QString obstacle;
    if (!canBeFolder(out->home, &obstacle)) {
        *why = QString("home '%1' cannot be used: '%2' is not a folder").arg(out->home, obstacle);
        return false;
    }
    return true;
}

static QString wrapped(const QStringList& words)
{
    QString text;
    int column = 0;
    for (const QString& word : words) {
        const bool fits = column > 0 && column + word.size() + 1 <= kHelpColumns;
        text += (fits ? QString(" ") : QString(column > 0 ? "\n  " : "  ")) + word;
        column = (fits ? column + 1 : 2) + word.size();
    }
    return text + QString("\n");
}

static QString callHelp()
{
    const QStringList host = callNames(CallKind::Host) + callNames(CallKind::Within);
    return QString("\ncalls of the host, for --die-at and Bench.failCall:\n") + wrapped(host)
        + QString("calls for files:\n") + wrapped(callNames(CallKind::File));
}

QString commandLineHelp()
{
    QString text("posebench: a small posing application that loads plug-ins\n\n"
                 "usage: posebench [options] [FILE.duf...] [--script FILE [ARG...]]\n\n"
                 "  FILE.duf...           pose presets to apply, in their order, to the figure "
                 "(without\n                        --figure to a Genesis8Female)\n");
    for (const OptionRow& row : kOptions) {
        const QString left = QString("  %1 %2").arg(QString(row.name), QString(row.value));
        text += left.leftJustified(24) + QString(row.help) + QString("\n");
    }
    text += QString("\nfigures: %1\n").arg(figureNames().join(", "));
    text += callHelp();
    text += QString(
        "\nexit code: the script's quit(code); 1 after an uncaught script error or a window\n"
        "that nobody answered; 2 when the command line cannot be used\n\n"
        "A pane that warns while it starts (after a crash, say) cannot be answered: the script "
        "has\n"
        "not begun. Start with --no-pane, then Bench.expect({...}) and Bench.startPane().\n\n"
        "example:\n"
        "  posebench --headless --home /tmp/bench --figure Genesis8Female --script pose.js\n"
        "with pose.js\n"
        "  Scene.getPrimarySelection().findBone(\"lThighBend\").getXRotControl().setValue(-90);\n"
        "  Bench.grabViewport(\"/tmp/pose.png\");\n"
        "  quit(0);\n");
    return text;
}

} // namespace quillon
