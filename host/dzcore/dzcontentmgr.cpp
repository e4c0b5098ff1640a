#include "dzcontentmgr.h"
#include "dzhostcalls.h"

#include <QDir>

DzContentMgr::DzContentMgr(const QStringList& directories)
    : DzBase(QString::fromLatin1("ContentMgr"))
{
    setContentDirectories(directories);
}

DzContentMgr::~DzContentMgr()
{
}

int DzContentMgr::getNumContentDirectories() const
{
    if (DZ_HOST_CALL("getNumContentDirectories"))
        return 0;
    return m_directories.size();
}

QString DzContentMgr::getContentDirectoryPath(int i) const
{
    if (DZ_HOST_CALL("getContentDirectoryPath"))
        return QString();
    return m_directories.value(i);
}

void DzContentMgr::setContentDirectories(const QStringList& directories)
{
    m_directories.clear();
    for (int i = 0; i < directories.size(); ++i)
        m_directories.append(QDir::cleanPath(QDir::fromNativeSeparators(directories.at(i))));
}
