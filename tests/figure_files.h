// figure_files.h - the figures' JSON files for tests, read by the script engine and not by the
// loader's own reader.
#pragma once

#include <QFile>
#include <QScriptEngine>
#include <QVariant>

inline QVariantMap figureFile(const QString& name)
{
    QFile file(QString(QUILLON_SOURCE_DIR "/host/figures/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return QVariantMap();
    QScriptEngine engine;
    return engine.evaluate("(" + QString::fromUtf8(file.readAll()) + ")").toVariant().toMap();
}

// The rows of a list in a file: figureRows("skeleton.json", "bones").
inline QVariantList figureRows(const QString& fileName, const QString& list)
{
    return figureFile(fileName).value(list).toList();
}

// Every control of a figure, file after file.
inline QVariantList figureControls(const QString& figure)
{
    QVariantList controls;
    const QVariantList files = figureFile(figure + ".json").value("controls").toList();
    for (const QVariant& file : files)
        controls += figureRows(file.toString(), "controls");
    return controls;
}
