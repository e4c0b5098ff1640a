// pose_menu.h - keys for what one does again and again while browsing poses: the entries press the
// buttons of the pane that browses, and know nothing of it but the buttons' names.
#pragma once

#include <QObject>

class PoseBenchWindow;
class QMenu;

class PoseMenu : public QObject {
    Q_OBJECT
public:
    PoseMenu(QMenu* menu, PoseBenchWindow* window); // fills the menu

private slots:
    void press(); // by the data of the action that calls
    void favorite(); // to Favorite, and from there back to Unranked
    void togglePlay();

private:
    PoseBenchWindow* m_window;
};
