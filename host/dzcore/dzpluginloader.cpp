#include "dzpluginloader.h"
#include "dzapp.h"
#include "dzplugin.h"

#include <QDir>
#include <QFileInfo>

typedef DzVersion (*SdkVersionEntry)();
typedef DzPlugin* (*DefinitionEntry)();

DzPluginLoader::DzPluginLoader(const QString& file)
    : m_file(QDir::cleanPath(QFileInfo(file).absoluteFilePath()))
    , m_library(m_file)
    , m_plugin(nullptr)
{
    // A missing symbol is told now and not as a crash later.
    m_library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
}

DzPluginLoader::~DzPluginLoader()
{
}

bool DzPluginLoader::fail(const QString& reason, QString* why)
{
    if (m_library.isLoaded())
        m_library.unload();
    m_sdkVersion = DzVersion();
    if (why)
        *why = QString::fromLatin1("plug-in %1: %2").arg(m_file, reason.simplified());
    return false;
}

template <class Entry> static Entry entryOf(QLibrary* library, const char* name) // null: absent
{
    return reinterpret_cast<Entry>(library->resolve(name));
}

bool DzPluginLoader::load(QString* why)
{
    if (m_plugin)
        return true;
    const QFileInfo info(m_file);
    if (!info.exists())
        return fail(QLatin1String("no such file"), why);
    if (!info.isFile())
        return fail(QLatin1String("not a file"), why);
    if (!m_library.load())
        return fail(QString::fromLatin1("not a library that can be loaded (%1)")
                        .arg(m_library.errorString()),
            why);

    const SdkVersionEntry sdkVersion = entryOf<SdkVersionEntry>(&m_library, "getSDKVersion");
    const DefinitionEntry definition = entryOf<DefinitionEntry>(&m_library, "getPluginDefinition");
    if (!sdkVersion || !definition)
        return fail(QString::fromLatin1("not a plug-in, it has no %1()")
                        .arg(QLatin1String(sdkVersion ? "getPluginDefinition" : "getSDKVersion")),
            why);
    m_sdkVersion = sdkVersion();
    if (m_sdkVersion > DzVersion(DZ_SDK_VERSION))
        return fail(QString::fromLatin1("made for version %1 of the interface, this is %2")
                        .arg(m_sdkVersion.toString(), DzVersion(DZ_SDK_VERSION).toString()),
            why);
    DzPlugin* plugin = definition();
    if (!plugin)
        return fail(QLatin1String("it has no definition"), why);

    m_plugin = plugin;
    m_plugin->m_filename = m_file;
    m_plugin->m_status = DzPlugin::Loaded;
    if (dzApp)
        dzApp->addPlugin(m_plugin);
    return true;
}

bool DzPluginLoader::unload()
{
    if (!m_plugin)
        return false;
    if (dzApp)
        dzApp->removePlugin(m_plugin);
    m_plugin = nullptr;
    m_sdkVersion = DzVersion();
    return m_library.unload();
}

DzPlugin* DzPluginLoader::getPlugin() const
{
    return m_plugin;
}

DzVersion DzPluginLoader::getSDKVersion() const
{
    return m_sdkVersion;
}

QString DzPluginLoader::getFile() const
{
    return m_file;
}
