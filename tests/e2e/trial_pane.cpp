#include "trial_pane.h"

#include "dzactionmgr.h"
#include "dzapp.h"
#include "dzbasicdialog.h"
#include "dzclassfactory.h"
#include "dzfloatproperty.h"
#include "dzgzio.h"
#include "dzmainwindow.h"
#include "dzplugin.h"
#include "dzprogress.h"
#include "dzscene.h"
#include "dzscript.h"
#include "dzundostack.h"

#include <QAccessibleWidget>
#include <QCheckBox>
#include <QCursor>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QRadioButton>
#include <QVBoxLayout>

#include <climits>
#include <cstdlib>
#include <sys/file.h>
#include <unistd.h>

namespace {

struct Doing {
    const char* name;
    QString (*run)();
};

QString ask()
{
    const QMessageBox::StandardButton answer = QMessageBox::question(
        nullptr, "Trial", "Is this\na question?", QMessageBox::Yes | QMessageBox::No);
    return answer == QMessageBox::Yes ? "yes" : "no";
}

QString warn()
{
    QMessageBox::warning(dzApp->getDialogParent(), "Error", "Nothing is wrong.", QMessageBox::Ok);
    return "warned";
}

QString askTwice()
{
    const QString first = ask();
    return first + " " + ask();
}

QString saveFile()
{
    const QString file = QFileDialog::getSaveFileName(
        nullptr, QString(), dzApp->getDataFolderPath(), "Trial Files (*.trial)");
    return "file " + file;
}

QGroupBox* grouped(const QString& title, QWidget* widget)
{
    QGroupBox* box = new QGroupBox(title);
    QVBoxLayout* layout = new QVBoxLayout(box);
    layout->addWidget(widget);
    return box;
}

QString fillIn()
{
    DzBasicDialog dialog(dzApp->getInterface(), "Trial");
    dialog.setWindowTitle("Trial Settings");
    dialog.setFixedSize(320, 400);
    QCheckBox* check = new QCheckBox(" &Allow it ");
    check->setChecked(true);
    QLineEdit* edit = new QLineEdit("0.5");
    QGroupBox* order = new QGroupBox("Order");
    QVBoxLayout* layout = new QVBoxLayout(order);
    QRadioButton* first = new QRadioButton("XYZ");
    QRadioButton* second = new QRadioButton("ZYX");
    layout->addWidget(first);
    layout->addWidget(second);
    first->setChecked(true);
    dialog.addWidget(grouped("", check));
    dialog.addWidget(grouped("Nudge", edit));
    dialog.addWidget(order);
    if (!dialog.exec())
        return "cancelled";
    return QString("filled %1 %2 %3")
        .arg(check->isChecked() ? "on" : "off", edit->text(), second->isChecked() ? "ZYX" : "XYZ");
}

QGroupBox* radioGroup(const QString& title, QRadioButton* (&buttons)[2])
{
    QGroupBox* group = new QGroupBox(title);
    QVBoxLayout* layout = new QVBoxLayout(group);
    for (int i = 0; i < 2; ++i) {
        buttons[i] = new QRadioButton(i == 0 ? "Near" : "Far");
        layout->addWidget(buttons[i]);
    }
    return group;
}

QString chosen(QRadioButton* const (&buttons)[2])
{
    return buttons[0]->isChecked() ? "near" : buttons[1]->isChecked() ? "far" : "none";
}

QString choose()
{
    DzBasicDialog dialog(dzApp->getInterface(), "Trial Choice");
    dialog.setWindowTitle("Trial Choice");
    QRadioButton *left[2], *right[2];
    dialog.addWidget(radioGroup("Left", left));
    QGroupBox* group = radioGroup("Right", right);
    group->setCheckable(true);
    group->setChecked(false);
    dialog.addWidget(group);
    if (!dialog.exec())
        return "cancelled";
    return QString("chosen %1 %2 %3")
        .arg(chosen(left), chosen(right), group->isChecked() ? "on" : "off");
}

QString count()
{
    DzProgress progress("Counting", 3, false);
    for (int i = 0; i < 3 && !progress.isCancelled(); ++i)
        progress.step();
    return progress.isCancelled() ? "cancelled count" : "counted";
}

QString runScript()
{
    DzScript script;
    script.addLine("1 + 1;");
    return script.execute() ? "executed" : "not executed";
}

QString moveOnce() // one step of undo
{
    DzNode* node = dzScene->getPrimarySelection();
    const int before = dzUndoStack->getNumUndoItems();
    DzUndoStackHold hold;
    node->getXPosControl()->setValue(node->getXPosControl()->getValue() + 1);
    hold.accept("Move");
    return QString("steps %1").arg(dzUndoStack->getNumUndoItems() - before);
}

QString moveInWorld() // sets values within the host
{
    dzScene->getPrimarySelection()->setWSPos(DzVec3(7, 8, 9));
    const float x = dzScene->getPrimarySelection()->getXPosControl()->getValue();
    return QString("at %1").arg(double(x));
}

QString readPacked()
{
    const QString path = dzApp->getTempPath() + "/trial.gz";
    QFile out(path);
    DzGzIO writer(&out);
    if (!writer.open(QIODevice::WriteOnly) || writer.write("packed") != 6)
        return "not packed";
    writer.close();
    QFile in(path);
    DzGzIO reader(&in);
    return reader.open(QIODevice::ReadOnly) ? "read " + QString::fromLatin1(reader.readAll())
                                            : "not opened";
}

QString lookForFile()
{
    return QFile::exists(dzApp->getDataFolderPath() + "/trial.dat") ? "there" : "not there";
}

QString work()
{
    DzProgress progress("Working", 20, true);
    for (int i = 0; i < 20 && !progress.isCancelled(); ++i) {
        progress.setInfo(QString("Phase %1").arg(i / 10 + 1));
        progress.step();
    }
    return progress.isCancelled() ? "cancelled work" : "worked";
}

QString writeFile()
{
    QDir().mkpath(dzApp->getDataFolderPath());
    QFile file(dzApp->getDataFolderPath() + "/trial.dat");
    if (!file.open(QIODevice::WriteOnly))
        return "not opened";
    const bool written = file.write("trial") == 5 && file.flush();
    return written ? "written" : "not written";
}

QString handle(const QFile& opened) // the first thing that could not be done
{
    const QString path = opened.fileName(), other = path + ".other";
    QFile::remove(other);
    if (flock(opened.handle(), LOCK_EX) != 0)
        return "not locked";
    if (link(qPrintable(path), qPrintable(other)) != 0)
        return "not linked";
    char resolved[PATH_MAX];
    if (!realpath(qPrintable(path), resolved)) // the toolkit would go on with what it was given
        return "not resolved";
    const QStringList found = QDir(QFileInfo(path).path()).entryList({"trial.dat*"});
    return found.size() == 2 ? "handled" : "not listed";
}

QString handleFile()
{
    QFile file(dzApp->getDataFolderPath() + "/trial.dat");
    if (!file.open(QIODevice::ReadWrite) || lseek(file.handle(), 0, SEEK_SET) != 0)
        return "not sought";
    if (!file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return "rights not changed";
    return handle(file);
}

QString findAction()
{
    return dzApp->getInterface()->getActionMgr()->findAction("TrialAction") ? "found" : "not found";
}

QString showAddress()
{
    dzApp->showURL("http://trial.invalid/index.htm");
    return "shown";
}

QString startTimers(); // these two below
QString tellPointer();

const Doing kDoings[] = {
    {"ask", ask},
    {"warn", warn},
    {"ask twice", askTwice},
    {"save file", saveFile},
    {"fill in", fillIn},
    {"work", work},
    {"write file", writeFile},
    {"find action", findAction},
    {"show address", showAddress},
    {"start timer", startTimers},
    {"choose", choose},
    {"count", count},
    {"run script", runScript},
    {"move once", moveOnce},
    {"move in world", moveInWorld},
    {"read packed", readPacked},
    {"look for file", lookForFile},
    {"handle file", handleFile},
    {"pointer", tellPointer},
};
const int kDoingCount = int(std::size(kDoings));
const int kButtonHeightPx = 20;

TrialPane* g_pane = nullptr;

QString startTimers()
{
    g_pane->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly).at(0)->start(3000);
    return "started";
}

QString tellPointer()
{
    const QPoint pos = g_pane->mapFromGlobal(QCursor::pos());
    return QString("%1,%2 %3").arg(pos.x()).arg(pos.y()).arg(g_pane->underMouse() ? "on" : "off");
}

QRect buttonRect(int i)
{
    return QRect(10, 10 + i * kButtonHeightPx, 100, kButtonHeightPx - 2);
}

// The painted buttons, as children for assistive technology.
class TrialButton : public QAccessibleInterface {
public:
    TrialButton(TrialPane* pane, int index)
        : m_pane(pane)
        , m_index(index)
    {
    }
    bool isValid() const override
    {
        return true;
    }
    QObject* object() const override
    {
        return nullptr;
    }
    QAccessibleInterface* childAt(int, int) const override
    {
        return nullptr;
    }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_pane);
    }
    QAccessibleInterface* child(int) const override
    {
        return nullptr;
    }
    int childCount() const override
    {
        return 0;
    }
    int indexOfChild(const QAccessibleInterface*) const override
    {
        return -1;
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? QString(kDoings[m_index].name) : QString();
    }
    void setText(QAccessible::Text, const QString&) override
    {
    }
    QRect rect() const override
    {
        const QRect r = buttonRect(m_index);
        return QRect(m_pane->mapToGlobal(r.topLeft()), r.size());
    }
    QAccessible::Role role() const override
    {
        return QAccessible::Button;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.checkable = m_index == 1;
        return state;
    }

private:
    TrialPane* m_pane;
    int m_index;
};

class TrialPaneAccess : public QAccessibleWidget {
public:
    explicit TrialPaneAccess(TrialPane* pane)
        : QAccessibleWidget(pane, QAccessible::Pane)
    {
        for (int i = 0; i < kDoingCount; ++i)
            m_buttons.append(new TrialButton(pane, i));
    }
    ~TrialPaneAccess() override
    {
        qDeleteAll(m_buttons);
    }
    int childCount() const override
    {
        return kDoingCount;
    }
    QAccessibleInterface* child(int i) const override
    {
        return m_buttons.value(i);
    }

private:
    QList<TrialButton*> m_buttons;
};

QAccessibleInterface* makeAccess(const QString& className, QObject* object)
{
    return className == "TrialPane" ? new TrialPaneAccess(static_cast<TrialPane*>(object))
                                    : nullptr;
}

} // namespace

TrialPane::TrialPane()
    : DzPane("Trial")
{
    g_pane = this;
    QAccessible::installFactory(makeAccess);
    setMouseTracking(true);
    QTimer* once = new QTimer(this);
    once->setSingleShot(true);
    once->setInterval(3000);
    QTimer* again = new QTimer(this);
    connect(once, SIGNAL(timeout()), SLOT(timeIsUp()));
    connect(again, SIGNAL(timeout()), SLOT(timeIsUp()));
    again->start(600000);
    findAction(); // a host call within the construction
}

TrialPane::~TrialPane()
{
    QAccessible::removeFactory(makeAccess);
    g_pane = nullptr;
    QFile file(dzApp->getDataFolderPath() + "/closed.dat");
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write("closed\n");
}

void TrialPane::note(const QString& line)
{
    m_lines += line;
    update();
}

void TrialPane::timeIsUp()
{
    note("time is up");
}

void TrialPane::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(20, 30, 40));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(64, 0, 0));
    painter.drawEllipse(QRect(200, 10, 30, 20));
    painter.setPen(QColor(192, 192, 192));
    for (int i = 0; i < kDoingCount; ++i)
        painter.drawText(buttonRect(i), Qt::AlignLeft, QString(kDoings[i].name));
    QPixmap icon(16, 16);
    icon.fill(Qt::red);
    painter.drawPixmap(240, 10, icon);
    painter.translate(120, 50);
    painter.setPen(QColor(128, 128, 128));
    painter.drawText(QRect(0, 0, 300, 20000), Qt::AlignLeft, m_lines.join("\n"));
}

static QString pressText(const char* what, const QMouseEvent* event)
{
    return QString("%1 %2 at %3,%4 with %5")
        .arg(what)
        .arg(int(event->button()))
        .arg(event->x())
        .arg(event->y())
        .arg(int(event->modifiers()), 0, 16);
}

void TrialPane::mousePressEvent(QMouseEvent* event)
{
    note(pressText("press", event));
    for (int i = 0; i < kDoingCount; ++i)
        if (buttonRect(i).contains(event->pos()))
            return doButton(i);
}

void TrialPane::mouseDoubleClickEvent(QMouseEvent* event)
{
    note(pressText("double", event));
}

void TrialPane::mouseReleaseEvent(QMouseEvent* event)
{
    note(pressText("release", event));
}

void TrialPane::mouseMoveEvent(QMouseEvent* event)
{
    if (event->x() >= 150)
        note(QString("move %1,%2").arg(event->x()).arg(event->y()));
}

void TrialPane::enterEvent(QEvent*)
{
    note("enter");
}

void TrialPane::leaveEvent(QEvent*)
{
    note("leave");
}

void TrialPane::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_T)
        return event->ignore();
    note("key " + event->text());
}

void TrialPane::doButton(int button)
{
    const QString outcome = kDoings[button].run();
    note(outcome);
}

TrialPaneAction::TrialPaneAction()
    : DzPaneAction("TrialPane")
{
}

TrialAction::TrialAction()
    : DzAction("Trial", QString())
{
    setObjectName("TrialAction");
}

void TrialAction::executeAction()
{
    QMessageBox box(
        QMessageBox::NoIcon, "About Trial", "A plug-in made for trying.", QMessageBox::Ok);
    box.exec();
}

namespace {

template <class T> class Factory : public DzClassFactory {
public:
    explicit Factory(const char* guid)
        : DzClassFactory(&T::staticMetaObject, DzGuid::fromString(guid))
    {
    }
    using DzClassFactory::createInstance;
    QObject* createInstance() const override
    {
        return new T;
    }
};

Factory<TrialPane> g_paneFactory("0a0a0a0a-0001-4000-8000-000000000001");
Factory<TrialPaneAction> g_paneActionFactory("0a0a0a0a-0001-4000-8000-000000000002");
Factory<TrialAction> g_actionFactory("0a0a0a0a-0001-4000-8000-000000000003");

DzPlugin* definition()
{
    static DzPlugin plugin("Trial");
    static bool made = false;
    if (!made) {
        plugin.setAuthor("Nobody");
        plugin.setVersion(1, 2, 3, 4);
        plugin.setDescription("A plug-in made for trying.");
        plugin.addClassFactory(&g_paneFactory);
        plugin.addClassFactory(&g_paneActionFactory);
        plugin.addClassFactory(&g_actionFactory);
        made = true;
    }
    return &plugin;
}

} // namespace

extern "C" DZEXPORT DzVersion getSDKVersion()
{
    return DzVersion(4, 5, 0, 100);
}

extern "C" DZEXPORT DzPlugin* getPluginDefinition()
{
    return definition();
}
