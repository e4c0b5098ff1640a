// dzscript.h - a script, put together line by line and run in an engine of its own.
// It sees the globals of dzscriptglobals.h, and "args" with the arguments of execute().
#pragma once

#include "dzbase.h"

#include <QStringList>
#include <QVariant>

class DZCORE_EXPORT DzScript : public DzBase {
    Q_OBJECT
public:
    DzScript();
    ~DzScript() override;

    Q_INVOKABLE void clear(); // text, error and result
    Q_INVOKABLE void addLine(const QString& line, int indent = 0); // indent in steps of 4 blanks
    Q_INVOKABLE QString getCode() const;

    // Runs the text in a fresh engine. False on a syntax error or an uncaught exception, told by
    // errorMessage() and errorLine() and in the host's log.
    Q_INVOKABLE bool execute();
    bool execute(const QVariantList& args);
    // Runs the text, then calls one of its functions, whose value becomes the result.
    bool call(const QString& function, const QVariantList& args);

    Q_INVOKABLE QString errorMessage() const; // empty after success
    Q_INVOKABLE int errorLine() const; // from 1; -1 after success
    QVariant result() const; // value of the last statement or of the function called

private:
    bool run(const QVariantList& args, const QString* function, const QVariantList& callArgs);
    bool fail(const QString& message, int line); // false

    QStringList m_lines;
    QString m_error;
    int m_errorLine;
    QVariant m_result;
};
