// dzcontentmgr.h - where content is found. Paths with forward slashes, no trailing one.
#pragma once

#include "dzbase.h"

#include <QStringList>

class DZCORE_EXPORT DzContentMgr : public DzBase {
    Q_OBJECT
public:
    explicit DzContentMgr(const QStringList& directories = QStringList());
    ~DzContentMgr() override;

    Q_INVOKABLE int getNumContentDirectories() const;
    Q_INVOKABLE QString getContentDirectoryPath(int i) const; // empty outside 0..n-1

    void setContentDirectories(const QStringList&); // for embedding applications

private:
    QStringList m_directories;
};
