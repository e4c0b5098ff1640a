// host_menus.h - the menu bar of the window. Menus are a table; actions of the action manager are
// added where their getDefaultMenuPath() says, and follow its list.
#pragma once

#include <QObject>

class PoseBenchWindow;
class QAction;
class QMenu;

class HostMenus : public QObject {
    Q_OBJECT
public:
    explicit HostMenus(PoseBenchWindow* window); // fills its menu bar

public slots:
    void newScene();
    void loadFigure(); // by the data of the action that calls
    void addProp();
    void openPosePreset();
    void savePosePreset();
    void savePicture();
    void undo();
    void redo();
    void selectAll();
    void selectNone();
    void deleteSelected();
    void showView();
    void setFloor(bool on);
    void setHighlight(bool on);
    void showPlugins();
    void showGuide();
    void showKeys();
    void showPluginAbout(); // by the data of the action that calls
    void showAbout();

private slots:
    void updateUndo();
    void placeManagedActions();

private:
    void fillFileMenu();
    void fillEditMenu();
    void fillViewMenu();
    void fillHelpMenu();
    void addPluginAbouts(QMenu* menu);
    QMenu* menuAt(const QString& path); // "&Window/Panes (Tabs)"; made when missing

    PoseBenchWindow* m_window;
    QAction* m_undo;
    QAction* m_redo;
};
