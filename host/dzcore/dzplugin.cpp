#include "dzplugin.h"

DzPlugin::DzPlugin(const QString& name)
    : m_name(name)
    , m_status(Loaded)
{
}

DzPlugin::~DzPlugin()
{
}

QString DzPlugin::getName() const
{
    return m_name;
}

QString DzPlugin::getAuthor() const
{
    return m_author;
}

QString DzPlugin::getDescription() const
{
    return m_description;
}

DzVersion DzPlugin::getVersion() const
{
    return m_version;
}

QString DzPlugin::getVersionString() const
{
    return m_version.toString();
}

QString DzPlugin::getFilename() const
{
    return m_filename;
}

DzPlugin::Status DzPlugin::getStatus() const
{
    return m_status;
}

void DzPlugin::setAuthor(const QString& author)
{
    m_author = author;
}

void DzPlugin::setVersion(const DzVersion& version)
{
    m_version = version;
}

void DzPlugin::setVersion(unsigned short majorPart, unsigned short minorPart,
    unsigned short revision, unsigned short build)
{
    m_version = DzVersion(majorPart, minorPart, revision, build);
}

void DzPlugin::setDescription(const QString& text)
{
    m_description = text;
}

void DzPlugin::addClassFactory(DzClassFactory* factory)
{
    if (factory && !m_factories.contains(factory))
        m_factories.append(factory);
}

int DzPlugin::getNumClassFactories() const
{
    return m_factories.size();
}

DzClassFactory* DzPlugin::getClassFactory(int i) const
{
    return m_factories.value(i, nullptr);
}
