// dzapp.h - the application as plug-ins see it: paths, services, dialogs' parent, class factories.
// One object exists: dzApp. It is no QApplication; create one of those first. Library code and
// plug-ins also run without a DzApp (unit tests), so check dzApp before use.
#pragma once

#include "dzappsetup.h"
#include "dzcore_export.h"

#include <QList>
#include <QObject>
#include <QPointer>

class DzClassFactory;
class DzContentMgr;
class DzMainWindow;
class DzPlugin;
class QWidget;

class DZCORE_EXPORT DzApp : public QObject {
    Q_OBJECT
public:
    explicit DzApp(const DzAppSetup&); // becomes dzApp
    ~DzApp() override;

    Q_INVOKABLE DzMainWindow* getInterface() const; // null without a window
    Q_INVOKABLE DzContentMgr* getContentMgr() const;
    QWidget* getDialogParent() const; // the active modal widget, else the main window, else null

    Q_INVOKABLE QString getDataFolderPath() const;
    Q_INVOKABLE QString getTempPath() const;
    Q_INVOKABLE QString getDocumentationPath() const;
    Q_INVOKABLE QString getPluginsPath() const;
    Q_INVOKABLE QString getAppDataPath() const;
    Q_INVOKABLE QString getHomePath() const;

    // Opens an address outside the host. An address without a scheme is refused, with a log line.
    Q_INVOKABLE void showURL(const QString& url);
    Q_INVOKABLE void log(const QString& line);
    Q_INVOKABLE void statusLine(const QString& text, bool addToLog = true);

    const DzClassFactory* findClassFactory(const QString& className) const; // null when unknown

    // ---- for embedding applications --------------------------------------------------------
    const DzAppSetup& getSetup() const;
    void setInterface(DzMainWindow*); // DzMainWindow's constructor calls it
    void addPlugin(DzPlugin*); // its factories can be found from now on; not owned
    void removePlugin(DzPlugin*);
    int getNumPlugins() const;
    DzPlugin* getPlugin(int i) const; // null outside 0..n-1
    void addClassFactory(DzClassFactory*); // one of the application's own; not owned
    QList<DzClassFactory*> getClassFactories() const; // the application's, then each plug-in's
    QStringList getShownUrls() const; // every address accepted by showURL, oldest first
    QStringList getLogLines() const; // the newest 10,000
    void announceClosing(); // emits closing(), once

signals:
    void closing();
    void lineLogged(const QString& line);
    void pluginListChanged();

private:
    DzAppSetup m_setup;
    DzContentMgr* m_contentMgr;
    QPointer<DzMainWindow> m_interface;
    QList<DzPlugin*> m_plugins;
    QList<DzClassFactory*> m_ownFactories;
    QStringList m_urls, m_logLines;
    bool m_closing;
};

extern DZCORE_EXPORT DzApp* dzApp; // null before the application exists
