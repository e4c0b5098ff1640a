#include "host/posebench/host_menus.h"

#include "host/posebench/content_library_pane.h"
#include "host/posebench/guide_address.h"
#include "host/posebench/keys_dialog.h"
#include "host/posebench/plugin_list_dialog.h"
#include "host/posebench/pose_menu.h"
#include "host/posebench/pose_preset_io.h"
#include "host/posebench/posebench_window.h"
#include "host/posebench/preset_commands.h"
#include "host/posebench/scene_commands.h"
#include "host/posebench/status_line.h"
#include "host/posebench/viewport.h"

#include "host/figures/figure_data.h"

#include "dzaction.h"
#include "dzactionmgr.h"
#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzcontentmgr.h"
#include "dzplugin.h"
#include "dzscene.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>

using namespace quillon;

namespace {

struct PropRow {
    const char* label;
    float low[3], high[3];
};

const PropRow kProps[] = {
    {"Box", {-25, 0, -25}, {25, 50, 25}},
    {"Seat", {-22, 0, -22}, {22, 45, 22}},
    {"Table", {-60, 70, -35}, {60, 74, 35}},
    {"Pole", {-2, 0, -2}, {2, 200, 2}},
};

struct ViewRow {
    const char* label;
    float yawDeg, pitchDeg;
};

const ViewRow kViews[] = {
    {"Front", 0, 4},
    {"Left Side", 90, 4},
    {"Back", 180, 4},
    {"Right Side", -90, 4},
    {"Above", 0, 89},
};

enum SaveKind { SavePlain, SaveCompressed, SaveAnimated };
const char* const kSaveFilters[] = {"Pose preset (*.duf)", "Compressed pose preset (*.duf)",
    "Pose preset with all keys of the range (*.duf)"};

} // namespace

static QVariant callersData(QObject* sender)
{
    const QAction* action = qobject_cast<QAction*>(sender);
    return action ? action->data() : QVariant();
}

static QAction* addAction(QMenu* menu, const QString& text, QObject* target, const char* slot,
    const QKeySequence& keys = QKeySequence())
{
    QAction* action = menu->addAction(text);
    action->setShortcut(keys);
    bool ok = QObject::connect(action, SIGNAL(triggered()), target, slot);
    Q_ASSERT(ok);
    Q_UNUSED(ok);
    return action;
}

HostMenus::HostMenus(PoseBenchWindow* window)
    : QObject(window)
    , m_window(window)
    , m_undo(nullptr)
    , m_redo(nullptr)
{
    fillFileMenu();
    fillEditMenu();
    fillViewMenu();
    new PoseMenu(menuAt("&Pose"), window);
    menuAt("&Window/Panes (Tabs)");
    fillHelpMenu();
    for (const char* signal : {SIGNAL(undoCaptionChanged(QString)),
             SIGNAL(redoCaptionChanged(QString)), SIGNAL(stackChanged())})
        connect(dzUndoStack, signal, SLOT(updateUndo()));
    connect(window->getActionMgr(), SIGNAL(actionListChanged()), SLOT(placeManagedActions()));
    updateUndo();
    placeManagedActions();
}

// ---- filling -------------------------------------------------------------------------------

void HostMenus::fillFileMenu()
{
    QMenu* menu = menuAt("&File");
    addAction(menu, tr("&New Scene"), this, SLOT(newScene()), QKeySequence::New);
    QMenu* figures = menuAt("&File/Load &Figure");
    for (const QString& name : figureNames()) {
        QString why;
        const FigureData* data = figureData(name, &why);
        const int number = figures->actions().size() + 1;
        QAction* action = addAction(figures, data ? data->label : name, this, SLOT(loadFigure()),
            QKeySequence(QString("Ctrl+%1").arg(number)));
        action->setData(name);
    }
    QMenu* props = menuAt("&File/Add &Prop");
    for (const PropRow& row : kProps)
        addAction(props, tr(row.label), this, SLOT(addProp()))->setData(QString(row.label));
    menu->addSeparator();
    addAction(menu, tr("&Open Pose Preset..."), this, SLOT(openPosePreset()), QKeySequence::Open);
    addAction(menu, tr("&Save Pose Preset..."), this, SLOT(savePosePreset()), QKeySequence::Save);
    addAction(menu, tr("Save P&icture..."), this, SLOT(savePicture()));
    menu->addSeparator();
    addAction(menu, tr("&Quit"), m_window, SLOT(close()), QKeySequence(tr("Ctrl+Q")));
}

void HostMenus::fillEditMenu()
{
    QMenu* menu = menuAt("&Edit");
    m_undo = addAction(menu, tr("&Undo"), this, SLOT(undo()), QKeySequence::Undo);
    m_redo = addAction(menu, tr("&Redo"), this, SLOT(redo()), QKeySequence(tr("Ctrl+Shift+Z")));
    menu->addSeparator();
    addAction(menu, tr("Select &All"), this, SLOT(selectAll()), QKeySequence::SelectAll);
    addAction(menu, tr("Select &None"), this, SLOT(selectNone()), QKeySequence(tr("Ctrl+D")));
    menu->addSeparator();
    addAction(menu, tr("&Delete Selected"), this, SLOT(deleteSelected()), QKeySequence::Delete);
}

void HostMenus::fillViewMenu()
{
    QMenu* menu = menuAt("&View");
    for (const ViewRow& row : kViews)
        addAction(menu, tr(row.label), this, SLOT(showView()))->setData(int(&row - kViews));
    menu->addSeparator();
    addAction(menu, tr("&Frame Selection"), m_window->viewport(), SLOT(frameSelection()),
        QKeySequence(tr("Ctrl+F")));
    addAction(
        menu, tr("&Home"), m_window->viewport(), SLOT(showHome()), QKeySequence(tr("Ctrl+Home")));
    menu->addSeparator();
    const QPair<QString, const char*> switches[] = {{tr("F&loor"), SLOT(setFloor(bool))},
        {tr("&Highlight Selection"), SLOT(setHighlight(bool))}};
    for (const auto& row : switches) {
        QAction* action = menu->addAction(row.first);
        action->setCheckable(true);
        action->setChecked(true);
        connect(action, SIGNAL(toggled(bool)), row.second);
    }
}

void HostMenus::fillHelpMenu()
{
    QMenu* menu = menuAt("&Help");
    addAction(menu, tr("&Guide"), this, SLOT(showGuide()), QKeySequence(Qt::Key_F1));
    addAction(menu, tr("&Mouse and Keys..."), this, SLOT(showKeys()));
    menu->addSeparator();
    addAction(menu, tr("About Installed &Plug-ins..."), this, SLOT(showPlugins()));
    addPluginAbouts(menu);
    addAction(menu, tr("&About posebench..."), this, SLOT(showAbout()));
}

static QString plainTitle(QString title)
{
    return title.remove('&');
}

static QMenu* submenu(const QList<QAction*>& actions, const QString& title)
{
    for (QAction* action : actions)
        if (action->menu() && plainTitle(action->menu()->title()) == plainTitle(title))
            return action->menu();
    return nullptr;
}

QMenu* HostMenus::menuAt(const QString& path)
{
    QMenu* menu = nullptr;
    for (const QString& title : path.split('/')) {
        QMenu* next = submenu(menu ? menu->actions() : m_window->menuBar()->actions(), title);
        if (!next)
            next = menu ? menu->addMenu(title) : m_window->menuBar()->addMenu(title);
        menu = next;
    }
    return menu;
}

void HostMenus::placeManagedActions()
{
    const DzActionMgr* manager = m_window->getActionMgr();
    for (int i = 0; i < manager->getNumActions(); ++i) {
        DzAction* action = manager->getAction(i);
        const QString path = action->getDefaultMenuPath();
        if (!path.isEmpty() && action->associatedWidgets().isEmpty())
            menuAt(path)->addAction(action);
    }
}

// ---- file ----------------------------------------------------------------------------------

void HostMenus::newScene()
{
    quillon::newScene();
}

void HostMenus::loadFigure()
{
    QString why;
    if (!addFigureToScene(callersData(sender()).toString(), &why))
        QMessageBox::warning(m_window, tr("Load Figure"), why);
}

void HostMenus::addProp()
{
    const QString label = callersData(sender()).toString();
    for (const PropRow& row : kProps)
        if (label == QLatin1String(row.label))
            addPropToScene(label, DzVec3(row.low[0], row.low[1], row.low[2]),
                DzVec3(row.high[0], row.high[1], row.high[2]));
}

static QString startFolder()
{
    const DzContentMgr* content = dzApp ? dzApp->getContentMgr() : nullptr;
    return content ? content->getContentDirectoryPath(0) : QString();
}

void HostMenus::openPosePreset()
{
    DzSkeleton* figure = figureToPose();
    if (!figure) {
        QMessageBox::information(
            m_window, tr("Open Pose Preset"), tr("Select a figure to pose first."));
        return;
    }
    const QString file = QFileDialog::getOpenFileName(
        m_window, tr("Open Pose Preset"), startFolder(), tr("Pose presets (*.duf);;All files (*)"));
    if (file.isEmpty())
        return;
    QString text;
    if (applyPresetFiles({file}, figure, &text))
        m_window->statusLine()->say(text);
    else
        QMessageBox::warning(m_window, tr("Open Pose Preset"), text);
}

void HostMenus::savePosePreset()
{
    const DzSkeleton* figure = figureToPose();
    if (!figure) {
        QMessageBox::information(
            m_window, tr("Save Pose Preset"), tr("Select the figure whose pose to save."));
        return;
    }
    QString filter = kSaveFilters[SavePlain];
    const QString filters = QString("%1;;%2;;%3")
                                .arg(kSaveFilters[SavePlain], kSaveFilters[SaveCompressed],
                                    kSaveFilters[SaveAnimated]);
    QString file = QFileDialog::getSaveFileName(
        m_window, tr("Save Pose Preset"), startFolder(), filters, &filter);
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix() != "duf")
        file += ".duf";
    const DzTime now = dzScene->getTime();
    PresetSaveOptions options;
    options.compress = filter == kSaveFilters[SaveCompressed];
    options.range
        = filter == kSaveFilters[SaveAnimated] ? dzScene->getAnimRange() : DzTimeRange(now, now);
    QString why;
    if (!quillon::savePosePreset(file, figure, options, &why))
        QMessageBox::warning(m_window, tr("Save Pose Preset"), why);
    else
        m_window->statusLine()->say(tr("Saved %1").arg(file));
}

void HostMenus::savePicture()
{
    QString file = QFileDialog::getSaveFileName(
        m_window, tr("Save Picture"), QString(), tr("Pictures (*.png)"));
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += ".png";
    if (!m_window->viewport()->grabScene().save(file))
        QMessageBox::warning(m_window, tr("Save Picture"), tr("%1 cannot be written.").arg(file));
}

// ---- edit and view -------------------------------------------------------------------------

void HostMenus::undo()
{
    dzUndoStack->undo();
}

void HostMenus::redo()
{
    dzUndoStack->redo();
}

void HostMenus::updateUndo()
{
    m_undo->setText(tr("&Undo %1").arg(dzUndoStack->getUndoCaption()).trimmed());
    m_redo->setText(tr("&Redo %1").arg(dzUndoStack->getRedoCaption()).trimmed());
    m_undo->setEnabled(dzUndoStack->canUndo());
    m_redo->setEnabled(dzUndoStack->canRedo());
}

void HostMenus::selectAll()
{
    dzScene->selectAllNodes(true);
}

void HostMenus::selectNone()
{
    dzScene->selectAllNodes(false);
}

void HostMenus::deleteSelected()
{
    if (!removeSelectedNodes())
        m_window->statusLine()->say(tr("Select a figure or a prop to delete."));
}

void HostMenus::showView()
{
    const ViewRow& row = kViews[callersData(sender()).toInt()];
    m_window->viewport()->showView(row.yawDeg, row.pitchDeg);
}

void HostMenus::setFloor(bool on)
{
    RenderOptions options = m_window->viewport()->renderOptions();
    options.floor = on;
    m_window->viewport()->setRenderOptions(options);
}

void HostMenus::setHighlight(bool on)
{
    RenderOptions options = m_window->viewport()->renderOptions();
    options.highlight = on;
    m_window->viewport()->setRenderOptions(options);
}

// ---- help ----------------------------------------------------------------------------------

void HostMenus::showPlugins()
{
    PluginListDialog dialog(m_window);
    dialog.exec();
}

void HostMenus::showGuide()
{
    QString why;
    const QString guide = guideFile();
    if (guide.isEmpty())
        m_window->statusLine()->say(tr("No plug-in has a guide here."));
    else if (!openAddress(guide, &why))
        m_window->statusLine()->say(why);
}

void HostMenus::showKeys()
{
    showKeysDialog(m_window);
}

// A plug-in's own About: the action of that name, which it may switch on later than it is loaded.
void HostMenus::addPluginAbouts(QMenu* menu)
{
    for (int i = 0; dzApp && i < dzApp->getNumPlugins(); ++i) {
        const DzPlugin* plugin = dzApp->getPlugin(i);
        for (int f = 0; f < plugin->getNumClassFactories(); ++f) {
            const QString name = plugin->getClassFactory(f)->className();
            if (!name.endsWith("AboutAction"))
                continue;
            const QString title = tr("About %1...").arg(plugin->getName());
            addAction(menu, title, this, SLOT(showPluginAbout()))->setData(name);
        }
    }
}

void HostMenus::showPluginAbout()
{
    const QString name = callersData(sender()).toString();
    DzAction* about = m_window->getActionMgr()->findAction(name);
    if (about && about->isEnabled())
        about->trigger();
    else
        m_window->statusLine()->say(tr("Open the plug-in's pane first: Window > Panes (Tabs)."));
}

void HostMenus::showAbout()
{
    QMessageBox::about(m_window, tr("About posebench"),
        tr("<b>posebench</b><p>A small posing application to try Quillon in: figures, props, "
           "keys, undo, pose presets and dockable panes.</p>"));
}
