#include "host/posebench/content_library_pane.h"

#include "host/posebench/dark_theme.h"
#include "host/posebench/pose_preset_io.h"
#include "host/posebench/scene_commands.h"

#include "dzapp.h"
#include "dzcontentmgr.h"
#include "dzscene.h"
#include "dzskeleton.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

using namespace quillon;

static QToolButton* toolButton(
    QStyle::StandardPixmap icon, const QString& tip, QObject* target, const char* slot)
{
    QToolButton* button = new QToolButton;
    button->setIcon(button->style()->standardIcon(icon));
    button->setToolTip(tip);
    button->setAutoRaise(true);
    QObject::connect(button, SIGNAL(clicked()), target, slot);
    return button;
}

DzContentLibraryPane::DzContentLibraryPane()
    : DzPane(tr("Content Library"))
    , m_place(new QLabel)
    , m_list(new QListWidget)
    , m_up(toolButton(QStyle::SP_FileDialogToParent, tr("Folder above"), this, SLOT(goUp())))
{
    m_list->setObjectName("contentList");
    m_list->setIconSize(QSize(32, 32));
    m_list->setUniformItemSizes(true);
    m_place->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_place->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QHBoxLayout* bar = new QHBoxLayout;
    bar->addWidget(
        toolButton(QStyle::SP_DirHomeIcon, tr("Content directories"), this, SLOT(showRoots())));
    bar->addWidget(m_up);
    bar->addWidget(m_place, 1);
    bar->addWidget(toolButton(QStyle::SP_BrowserReload, tr("Read again"), this, SLOT(refresh())));
    QVBoxLayout* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 0);
    layout->setSpacing(4);
    layout->addLayout(bar);
    layout->addWidget(m_list, 1);
    connect(m_list, SIGNAL(itemDoubleClicked(QListWidgetItem*)), SLOT(openItem(QListWidgetItem*)));
    showRoots();
}

QString DzContentLibraryPane::currentFolder() const
{
    return m_folder;
}

QStringList DzContentLibraryPane::browsedFolders() const
{
    return m_browsed;
}

void DzContentLibraryPane::browseToNativeFolder(const QString& folder)
{
    m_browsed << folder;
    showFolder(folder);
}

void DzContentLibraryPane::addItem(const QString& text, const QString& path, const QIcon& icon)
{
    QListWidgetItem* item = new QListWidgetItem(icon, text, m_list);
    item->setData(Qt::UserRole, path);
    item->setToolTip(path);
}

void DzContentLibraryPane::showRoots()
{
    m_folder.clear();
    m_list->clear();
    m_up->setEnabled(false);
    m_place->setText(tr("Content directories"));
    const DzContentMgr* content = dzApp ? dzApp->getContentMgr() : nullptr;
    for (int i = 0; content && i < content->getNumContentDirectories(); ++i)
        addItem(content->getContentDirectoryPath(i), content->getContentDirectoryPath(i),
            style()->standardIcon(QStyle::SP_DriveHDIcon));
}

// A card with a little figure: presets without a picture of their own.
static QIcon plainPresetIcon()
{
    QPixmap picture(64, 64);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kTheme.line);
    painter.drawRoundedRect(QRectF(6, 2, 52, 60), 6, 6);
    painter.setBrush(kTheme.text);
    painter.drawEllipse(QPointF(32, 17), 6.5, 6.5);
    painter.setPen(QPen(kTheme.text, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({QPointF(16, 24), QPointF(32, 29), QPointF(48, 24)}));
    painter.drawLine(32, 29, 32, 41);
    painter.drawPolyline(QPolygonF({QPointF(22, 55), QPointF(32, 41), QPointF(42, 55)}));
    return QIcon(picture);
}

// A preset shows the picture of the same name beside it.
static QIcon presetIcon(const QFileInfo& preset, const QIcon& plain)
{
    for (const char* extension : {".tip.png", ".png"}) {
        const QString picture = preset.dir().filePath(preset.completeBaseName() + extension);
        if (QFileInfo::exists(picture))
            return QIcon(picture);
    }
    return plain;
}

void DzContentLibraryPane::showFolder(const QString& folder)
{
    m_folder = QDir::cleanPath(folder);
    m_list->clear();
    m_up->setEnabled(true);
    m_place->setText(QDir(m_folder).dirName());
    m_place->setToolTip(m_folder);
    const QDir dir(m_folder);
    if (!dir.exists()) {
        m_place->setText(tr("There is no folder %1").arg(m_folder));
        return;
    }
    const QIcon folderIcon = style()->standardIcon(QStyle::SP_DirIcon);
    const QIcon presetPlain = plainPresetIcon();
    for (const QFileInfo& entry : dir.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        addItem(entry.fileName(), entry.absoluteFilePath(), folderIcon);
    for (const QFileInfo& entry : dir.entryInfoList({"*.duf"}, QDir::Files, QDir::Name))
        addItem(entry.completeBaseName(), entry.absoluteFilePath(), presetIcon(entry, presetPlain));
}

void DzContentLibraryPane::refresh()
{
    if (m_folder.isEmpty())
        showRoots();
    else
        showFolder(m_folder);
}

void DzContentLibraryPane::goUp()
{
    const DzContentMgr* content = dzApp ? dzApp->getContentMgr() : nullptr;
    for (int i = 0; content && i < content->getNumContentDirectories(); ++i)
        if (m_folder == content->getContentDirectoryPath(i))
            return showRoots();
    QDir dir(m_folder);
    if (dir.cdUp())
        showFolder(dir.absolutePath());
    else
        showRoots();
}

void DzContentLibraryPane::openItem(QListWidgetItem* item)
{
    const QString path = item->data(Qt::UserRole).toString();
    if (QFileInfo(path).isDir()) {
        showFolder(path);
        return;
    }
    PosePreset preset;
    QString why;
    DzSkeleton* figure = figureToPose();
    if (!figure)
        emit message(tr("Select a figure to apply a pose."));
    else if (!readPosePreset(path, &preset, &why))
        emit message(why);
    else
        emit message(tr("%1: %2 channels set.")
                         .arg(preset.name)
                         .arg(applyPosePreset(preset, figure, dzScene->getTime())));
}
