// dzplugin.h - what a plug-in tells of itself, and the class factories it brings.
// A plug-in holds one static object and returns it from its entry point
//     extern "C" DZEXPORT DzPlugin* getPluginDefinition();
// beside
//     extern "C" DZEXPORT DzVersion getSDKVersion();
// The host never deletes it. It works without a DzApp.
#pragma once

#include "dzversion.h"

#include <QList>
#include <QObject>
#include <QString>

class DzClassFactory;

class DZCORE_EXPORT DzPlugin : public QObject {
    Q_OBJECT
    Q_ENUMS(Status)
public:
    enum Status { Loaded = 0, RequiresRestart, ManuallyDisabled, EvaluationInvalid, Failed };

    explicit DzPlugin(const QString& name);
    ~DzPlugin() override; // leaves the factories alone: they may be gone already

    QString getName() const;
    QString getAuthor() const;
    QString getDescription() const; // rich text; links are live where the host shows it
    DzVersion getVersion() const;
    QString getVersionString() const; // "0.93.0.0"
    QString getFilename() const; // absolute path; empty until a host loaded it
    Status getStatus() const;

    void setAuthor(const QString&);
    void setVersion(const DzVersion&);
    void setVersion(unsigned short majorPart, unsigned short minorPart, unsigned short revision,
        unsigned short build);
    void setDescription(const QString&);

    // The plug-in keeps ownership; the factory has to live as long as the library is loaded.
    // Null and a factory added before are ignored.
    void addClassFactory(DzClassFactory*);
    int getNumClassFactories() const;
    DzClassFactory* getClassFactory(int i) const; // null outside 0..n-1

private:
    friend class DzPluginLoader;

    QString m_name, m_author, m_description, m_filename;
    DzVersion m_version;
    Status m_status;
    QList<DzClassFactory*> m_factories;
};
