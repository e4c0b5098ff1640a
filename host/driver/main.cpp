// main.cpp - the posing application's entry: locale, command line and platform come before Qt.
#include "host/driver/bench_run.h"
#include "host/driver/command_line.h"
#include "host/driver/quiet_platform.h"
#include "host/driver/thumbnail_helper.h"
#include "host/driver/utf8_locale.h"

#include <QApplication>
#include <QFile>

#include <cstdio>

using namespace quillon;

static QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments += QFile::decodeName(argv[i]);
    return arguments;
}

static bool hasDisplay()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
        || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

int main(int argc, char** argv)
{
    useUtf8Locale();
    CommandLine commandLine;
    QString why;
    if (!readCommandLine(argumentsOf(argc, argv), &commandLine, &why))
        return refuse(why);
    if (commandLine.help) {
        std::fputs(commandLineHelp().toUtf8().constData(), stdout);
        return 0;
    }
    if (commandLine.headless || commandLine.thumbnails)
        useQuietPlatform();
    else if (!hasDisplay())
        return refuse(QString("there is no display; use --headless"));
    else
        QApplication::setAttribute(Qt::AA_EnableHighDpiScaling); // a screen may be dense
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    int qtArgc = 1; // the options are ours, not Qt's
    QApplication application(qtArgc, argv);
    QApplication::setApplicationName(QString("posebench"));
    return commandLine.thumbnails ? runThumbnailHelper() : runBench(commandLine);
}
