// content_library_pane.h - folders and presets of the content directories, with pictures.
//   double click, Enter   opens a folder, applies presets to the selected figure
//   path line             shows where one is, takes another folder, remembers the recent ones
//   search                by name as one types, over all content directories
// The class name is part of what scripts use: findPane("DzContentLibraryPane").
#pragma once

#include "host/posebench/content_files.h"

#include "dzpane.h"

#include <QStringList>
#include <QTimer>

#include <memory>

class ContentModel;
class ContentView;
class QComboBox;
class QLabel;
class QLineEdit;
class QModelIndex;
class QToolButton;
class ThumbnailStore;

class DzContentLibraryPane : public DzPane {
    Q_OBJECT
public:
    DzContentLibraryPane();
    ~DzContentLibraryPane() override;

    Q_INVOKABLE void browseToNativeFolder(const QString& folder); // absolute, forward slashes
    Q_INVOKABLE QString currentFolder() const; // empty: the list of content directories
    QStringList browsedFolders() const; // every folder asked for, oldest first
    QStringList recentFolders() const; // the last one first
    Q_INVOKABLE int picturesMade() const; // by the helper, since this pane is there

signals:
    void message(const QString& text); // for the status line
    void wantsToBeSeen(); // a plug-in has a folder shown

private slots:
    void showRoots();
    void goUp();
    void refresh();
    void openIndex(const QModelIndex&);
    void openTyped(); // of the path line
    void search(const QString& text);
    void searchOn();
    void sortAnew();

private:
    QWidget* makeBar();
    QWidget* makeSearch();
    void showFolder(const QString& folder);
    void show(std::vector<quillon::ContentEntry> entries, const QString& whenEmpty);
    void showFound();
    quillon::ContentOrder order() const;
    void remember(const QString& folder);
    void tell(const QString& note); // below the list

    ThumbnailStore* m_store;
    ContentModel* m_model;
    ContentView* m_view;
    QComboBox* m_path;
    QComboBox* m_order;
    QLineEdit* m_search;
    QLabel* m_note;
    QToolButton* m_up;
    QString m_folder;
    QStringList m_browsed;
    std::unique_ptr<quillon::ContentWalk> m_walk; // null: no search yet since the last reading
    QTimer m_slice; // of the walk
    size_t m_foundShown; // of the walk's when the list was made
};
