// command_line.h - what the user asked for on the command line, and every refusal of it.
// Input: the arguments without the program's name. Nothing is written to disk here.
// Errors: false and *why as one line that can be shown as it is; *out is then meaningless.
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace quillon {

struct CallRow;

struct CommandLine {
    bool help = false;
    bool headless = false;
    bool noPane = false;
    bool thumbnails = false; // this process only makes pictures
    QString home; // absolute; the folder need not exist
    bool dataGiven = false, tempGiven = false;
    QString data, temp; // told to plug-ins as they were typed, also when empty
    QStringList content; // absolute, existing
    QStringList plugins; // absolute, existing, each file once; empty: those of the program's tree
    QString figure, select; // empty: none
    QStringList presets; // absolute, existing
    QSize size; // of the window, pixels; invalid: its own choice
    QString proxyHost; // empty: no proxy given
    quint16 proxyPort = 0;
    const CallRow* dieAt = nullptr; // null: never
    int dieAtCall = 1; // at which one of these calls
    QString screenshot; // absolute file of a PNG; empty: none
    QString script; // absolute, existing; empty: none
    QStringList scriptArgs; // everything after the script's name
};

// Reads the arguments, then looks whether what they name is there.
bool readCommandLine(const QStringList& arguments, CommandLine* out, QString* why);

QString commandLineHelp();

} // namespace quillon
