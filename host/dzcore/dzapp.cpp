#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzcontentmgr.h"
#include "dzhostcalls.h"
#include "dzmainwindow.h"
#include "dzplugin.h"

#include <QApplication>
#include <QDesktopServices>
#include <QStatusBar>
#include <QUrl>

DzApp* dzApp = nullptr;

static const int kMaxLogLines = 10000;

DzApp::DzApp(const DzAppSetup& setup)
    : m_setup(setup)
    , m_contentMgr(new DzContentMgr(setup.contentDirectories))
    , m_closing(false)
{
    Q_ASSERT_X(!dzApp, "DzApp", "there is one already");
    dzApp = this;
}

DzApp::~DzApp()
{
    dzApp = nullptr;
    delete m_contentMgr;
}

DzMainWindow* DzApp::getInterface() const
{
    if (DZ_HOST_CALL("getInterface"))
        return nullptr;
    return m_interface;
}

DzContentMgr* DzApp::getContentMgr() const
{
    if (DZ_HOST_CALL("getContentMgr"))
        return nullptr;
    return m_contentMgr;
}

QWidget* DzApp::getDialogParent() const
{
    DZ_HOST_SEEN("getDialogParent");
    QWidget* modal = QApplication::activeModalWidget();
    return modal ? modal : m_interface.data();
}

QString DzApp::getDataFolderPath() const
{
    if (DZ_HOST_CALL("getDataFolderPath"))
        return QString();
    return m_setup.dataFolderPath;
}

QString DzApp::getTempPath() const
{
    if (DZ_HOST_CALL("getTempPath"))
        return QString();
    return m_setup.tempPath;
}

QString DzApp::getDocumentationPath() const
{
    if (DZ_HOST_CALL("getDocumentationPath"))
        return QString();
    return m_setup.documentationPath;
}

QString DzApp::getPluginsPath() const
{
    if (DZ_HOST_CALL("getPluginsPath"))
        return QString();
    return m_setup.pluginsPath;
}

QString DzApp::getAppDataPath() const
{
    if (DZ_HOST_CALL("getAppDataPath"))
        return QString();
    return m_setup.appDataPath;
}

QString DzApp::getHomePath() const
{
    if (DZ_HOST_CALL("getHomePath"))
        return QString();
    return m_setup.homePath;
}

void DzApp::showURL(const QString& address)
{
    if (DZ_HOST_CALL("showURL"))
        return;
    const QUrl url(address);
    if (!url.isValid() || url.scheme().isEmpty()) {
        log(QString::fromLatin1("Not an address: %1").arg(address));
        return;
    }
    m_urls.append(address);
    log(QString::fromLatin1("Show %1").arg(address));
    if (m_setup.openUrls)
        QDesktopServices::openUrl(url);
}

void DzApp::log(const QString& line)
{
    m_logLines.append(line);
    if (m_logLines.size() > kMaxLogLines)
        m_logLines.removeFirst();
    emit lineLogged(line);
}

void DzApp::statusLine(const QString& text, bool addToLog)
{
    if (m_interface)
        m_interface->statusBar()->showMessage(text);
    if (addToLog)
        log(text);
}

const DzClassFactory* DzApp::findClassFactory(const QString& className) const
{
    if (DZ_HOST_CALL("findClassFactory"))
        return nullptr;
    const QList<DzClassFactory*> all = getClassFactories();
    for (int i = 0; i < all.size(); ++i) {
        if (all.at(i)->className() == className)
            return all.at(i);
    }
    return nullptr;
}

const DzAppSetup& DzApp::getSetup() const
{
    return m_setup;
}

void DzApp::setInterface(DzMainWindow* window)
{
    m_interface = window;
}

void DzApp::addPlugin(DzPlugin* plugin)
{
    if (!plugin || m_plugins.contains(plugin))
        return;
    m_plugins.append(plugin);
    emit pluginListChanged();
}

void DzApp::removePlugin(DzPlugin* plugin)
{
    if (m_plugins.removeAll(plugin) > 0)
        emit pluginListChanged();
}

int DzApp::getNumPlugins() const
{
    return m_plugins.size();
}

DzPlugin* DzApp::getPlugin(int i) const
{
    return m_plugins.value(i, nullptr);
}

void DzApp::addClassFactory(DzClassFactory* factory)
{
    if (factory && !m_ownFactories.contains(factory))
        m_ownFactories.append(factory);
}

QList<DzClassFactory*> DzApp::getClassFactories() const
{
    QList<DzClassFactory*> all = m_ownFactories;
    for (int p = 0; p < m_plugins.size(); ++p) {
        for (int i = 0; i < m_plugins.at(p)->getNumClassFactories(); ++i)
            all.append(m_plugins.at(p)->getClassFactory(i));
    }
    return all;
}

QStringList DzApp::getShownUrls() const
{
    return m_urls;
}

QStringList DzApp::getLogLines() const
{
    return m_logLines;
}

void DzApp::announceClosing()
{
    if (m_closing)
        return;
    m_closing = true;
    emit closing();
}
