// posebench_window.h - the main window: viewport in the middle; docked pane groups on the left
// (content library, and where panes of plug-ins go), on the right (scene above parameters) and
// below (timeline). dzScene, dzUndoStack and dzApp must exist before it.
#pragma once

#include "dzmainwindow.h"

class DzContentLibraryPane;
class DzPane;
class DzPaneGroup;
class StatusLine;
class ViewportWidget;

class PoseBenchWindow : public DzMainWindow {
    Q_OBJECT
public:
    PoseBenchWindow();

    ViewportWidget* viewport() const;
    DzContentLibraryPane* contentPane() const; // null once someone deleted it
    StatusLine* statusLine() const;

    // Where it was in the last run, else in its own size or as much as the screen has room for.
    // wanted: a size that is asked for, if it is one.
    void placeOnScreen(const QSize& wanted);

public slots:
    void applyPresets(const QStringList& files); // to the selected figure; tells what came of it

private slots:
    void showContent();

protected:
    bool focusNextPrevChild(bool next) override; // in reading order

private:
    DzPaneGroup* dockGroup(Qt::DockWidgetArea area);
    void addPane(DzPane* pane, DzPaneGroup* group);
    void arrangeDocks();

    ViewportWidget* m_viewport;
    StatusLine* m_statusLine;
    DzPaneGroup* m_left;
    DzPaneGroup* m_rightTop;
    DzPaneGroup* m_rightBottom;
    DzPaneGroup* m_bottom;
};
