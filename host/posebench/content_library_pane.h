// content_library_pane.h - folders and presets of the content directories. A double click on a
// folder opens it, on a pose preset applies it to the selected figure.
// The class name is part of what scripts use: findPane("DzContentLibraryPane").
#pragma once

#include "dzpane.h"

#include <QStringList>

class QLabel;
class QListWidget;
class QListWidgetItem;
class QToolButton;

class DzContentLibraryPane : public DzPane {
    Q_OBJECT
public:
    DzContentLibraryPane();

    Q_INVOKABLE void browseToNativeFolder(const QString& folder); // absolute, forward slashes
    Q_INVOKABLE QString currentFolder() const; // empty: the list of content directories
    QStringList browsedFolders() const; // every folder asked for, oldest first

signals:
    void message(const QString& text); // for the status line

private slots:
    void showRoots();
    void goUp();
    void refresh();
    void openItem(QListWidgetItem* item);

private:
    void showFolder(const QString& folder);
    void addItem(const QString& text, const QString& path, const QIcon& icon);

    QLabel* m_place;
    QListWidget* m_list;
    QToolButton* m_up;
    QString m_folder;
    QStringList m_browsed;
};
