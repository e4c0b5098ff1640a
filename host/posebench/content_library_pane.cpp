#include "host/posebench/content_library_pane.h"

#include "host/posebench/content_model.h"
#include "host/posebench/content_view.h"
#include "host/posebench/dark_theme.h"
#include "host/posebench/preset_commands.h"
#include "host/posebench/scene_commands.h"
#include "host/posebench/thumbnail_files.h"
#include "host/posebench/thumbnail_store.h"

#include "dzapp.h"
#include "dzappsettings.h"
#include "dzcontentmgr.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

using namespace quillon;

static const char kSettings[] = "content_library";
static const char kRecent[] = "recent";
static const int kMostRecent = 10;
static const int kWalkSliceMs = 6; // of the walk, between two events
static const int kWalkPauseMs = 2;

static QToolButton* toolButton(
    QStyle::StandardPixmap icon, const QString& tip, QObject* target, const char* slot)
{
    QToolButton* button = new QToolButton;
    button->setIcon(button->style()->standardIcon(icon));
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoRaise(true);
    QObject::connect(button, SIGNAL(clicked()), target, slot);
    return button;
}

static QStringList contentDirectories()
{
    QStringList list;
    const DzContentMgr* content = dzApp ? dzApp->getContentMgr() : nullptr;
    for (int i = 0; content && i < content->getNumContentDirectories(); ++i)
        list << content->getContentDirectoryPath(i);
    return list;
}

// What the path line says above them.
static QString rootsTitle()
{
    return QObject::tr("Content directories");
}

// Beside the program that runs; a test is none that could help.
static ThumbnailSetup thumbnailSetup()
{
    const QString program = QCoreApplication::applicationFilePath();
    const QString home = dzApp ? dzApp->getAppDataPath() : QString();
    const bool helps = QFileInfo(program).fileName().startsWith("posebench") && !home.isEmpty();
    return {home + "/thumbnails", helps ? program : QString(), kThumbnailBytes};
}

// ---- making --------------------------------------------------------------------------------

DzContentLibraryPane::DzContentLibraryPane()
    : DzPane(tr("Content Library"))
    , m_store(new ThumbnailStore(thumbnailSetup(), this))
    , m_model(new ContentModel(m_store, this))
    , m_view(new ContentView)
    , m_path(new QComboBox)
    , m_order(new QComboBox)
    , m_search(new QLineEdit)
    , m_note(new QLabel)
    , m_up(toolButton(QStyle::SP_FileDialogToParent, tr("Folder above"), this, SLOT(goUp())))
    , m_foundShown(0)
{
    m_view->setObjectName("contentList");
    m_view->setModel(m_model);
    m_view->setAccessibleName(tr("Folders and poses"));
    QPalette quiet = m_note->palette();
    quiet.setColor(QPalette::WindowText, kTheme.dimText);
    m_note->setPalette(quiet);
    QVBoxLayout* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 0);
    layout->setSpacing(4);
    layout->addWidget(makeBar());
    layout->addWidget(makeSearch());
    layout->addWidget(m_view, 1);
    layout->addWidget(m_note);
    m_slice.setInterval(kWalkPauseMs);
    connect(&m_slice, SIGNAL(timeout()), SLOT(searchOn()));
    connect(m_view, SIGNAL(opened(QModelIndex)), SLOT(openIndex(QModelIndex)));
    connect(m_view, SIGNAL(upWanted()), SLOT(goUp()));
    connect(m_store, SIGNAL(changed()), m_view->viewport(), SLOT(update()));
    m_path->addItems(recentFolders());
    showRoots();
}

DzContentLibraryPane::~DzContentLibraryPane()
{
}

QWidget* DzContentLibraryPane::makeBar()
{
    m_path->setObjectName("contentPath");
    m_path->setEditable(true);
    m_path->setInsertPolicy(QComboBox::NoInsert);
    m_path->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_path->setToolTip(tr("Where one is; the recent folders"));
    m_path->setAccessibleName(tr("Folder"));
    m_path->setCompleter(nullptr);
    connect(m_path->lineEdit(), SIGNAL(returnPressed()), SLOT(openTyped()));
    connect(m_path, SIGNAL(activated(int)), SLOT(openTyped()));
    QWidget* bar = new QWidget;
    QHBoxLayout* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(
        toolButton(QStyle::SP_DirHomeIcon, tr("Content directories"), this, SLOT(showRoots())));
    layout->addWidget(m_up);
    layout->addWidget(m_path, 1);
    layout->addWidget(
        toolButton(QStyle::SP_BrowserReload, tr("Read again"), this, SLOT(refresh())));
    return bar;
}

QWidget* DzContentLibraryPane::makeSearch()
{
    m_search->setObjectName("contentSearch");
    m_search->setPlaceholderText(tr("Find a pose"));
    m_search->setToolTip(tr("By name, in all content directories"));
    m_search->setAccessibleName(tr("Find a pose by name"));
    m_search->setClearButtonEnabled(true);
    m_order->setObjectName("contentOrder");
    m_order->addItems({tr("By name"), tr("Newest first")});
    m_order->setAccessibleName(tr("Order"));
    connect(m_search, SIGNAL(textChanged(QString)), SLOT(search(QString)));
    connect(m_order, SIGNAL(currentIndexChanged(int)), SLOT(sortAnew()));
    QWidget* bar = new QWidget;
    QHBoxLayout* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_search, 1);
    layout->addWidget(m_order);
    return bar;
}

// ---- what is shown -------------------------------------------------------------------------

QString DzContentLibraryPane::currentFolder() const
{
    return m_folder;
}

QStringList DzContentLibraryPane::browsedFolders() const
{
    return m_browsed;
}

int DzContentLibraryPane::picturesMade() const
{
    return m_store->made();
}

void DzContentLibraryPane::browseToNativeFolder(const QString& folder)
{
    m_browsed << folder;
    showFolder(folder);
    emit wantsToBeSeen();
}

void DzContentLibraryPane::tell(const QString& note)
{
    m_note->setText(note);
}

ContentOrder DzContentLibraryPane::order() const
{
    return ContentOrder(m_order->currentIndex());
}

void DzContentLibraryPane::show(std::vector<ContentEntry> entries, const QString& whenEmpty)
{
    m_model->setEntries(std::move(entries));
    m_view->setTextWhenEmpty(whenEmpty);
    m_view->scrollToTop();
    const int count = m_model->rowCount();
    tell(count == 1 ? tr("1 entry") : tr("%1 entries").arg(count));
}

// The directories stand in the order in which they are searched.
void DzContentLibraryPane::showRoots()
{
    m_folder.clear();
    if (!m_search->text().isEmpty())
        return m_search->clear(); // comes back through search()
    m_up->setEnabled(false);
    m_path->setEditText(rootsTitle());
    std::vector<ContentEntry> entries;
    const QStringList roots = contentDirectories(), names = shortNames(roots);
    for (int i = 0; i < roots.size(); ++i)
        entries.push_back({names[i], roots[i], true});
    show(std::move(entries), tr("There are no content directories"));
}

void DzContentLibraryPane::showFolder(const QString& folder)
{
    m_folder = QDir::cleanPath(folder);
    if (!m_search->text().isEmpty())
        return m_search->clear(); // comes back through search()
    m_up->setEnabled(true);
    m_path->setEditText(m_folder);
    m_path->setToolTip(m_folder);
    std::vector<ContentEntry> entries;
    const bool exists = readContentFolder(m_folder, &entries);
    sortContent(order(), &entries);
    show(std::move(entries),
        exists ? tr("No folders and no poses here") : tr("There is no folder %1").arg(m_folder));
    if (exists)
        remember(m_folder);
}

void DzContentLibraryPane::refresh()
{
    m_store->forget();
    m_walk.reset();
    if (!m_search->text().trimmed().isEmpty())
        search(m_search->text());
    else if (m_folder.isEmpty())
        showRoots();
    else
        showFolder(m_folder);
}

void DzContentLibraryPane::sortAnew()
{
    if (!m_search->text().trimmed().isEmpty())
        return showFound();
    if (m_folder.isEmpty())
        return;
    std::vector<ContentEntry> entries = m_model->entries(); // with the times that are known
    sortContent(order(), &entries);
    show(std::move(entries), m_view->textWhenEmpty());
}

// ---- going about ---------------------------------------------------------------------------

void DzContentLibraryPane::goUp()
{
    if (m_folder.isEmpty() || contentDirectories().contains(m_folder))
        return showRoots();
    QDir dir(m_folder);
    if (dir.cdUp())
        showFolder(dir.absolutePath());
    else
        showRoots();
}

void DzContentLibraryPane::openTyped()
{
    const QString folder = m_path->currentText().trimmed();
    if (folder.isEmpty() || folder == rootsTitle())
        showRoots();
    else if (QFileInfo(folder).isDir())
        showFolder(QFileInfo(folder).absoluteFilePath());
    else
        tell(tr("There is no folder %1").arg(folder));
}

void DzContentLibraryPane::openIndex(const QModelIndex& index)
{
    const ContentEntry* entry = m_model->entryAt(index);
    if (!entry)
        return;
    if (entry->isFolder) {
        const QString folder = entry->path; // the entry goes with its list
        return showFolder(folder);
    }
    QString text;
    applyPresetFiles({entry->path}, figureToPose(), &text);
    emit message(text);
}

// ---- recent folders ------------------------------------------------------------------------

QStringList DzContentLibraryPane::recentFolders() const
{
    DzAppSettings settings((QLatin1String(kSettings)));
    return settings.getStringValue(QLatin1String(kRecent)).split('\n', Qt::SkipEmptyParts);
}

void DzContentLibraryPane::remember(const QString& folder)
{
    QStringList recent = recentFolders();
    if (recent.value(0) == folder)
        return;
    recent.removeAll(folder);
    recent.prepend(folder);
    recent = recent.mid(0, kMostRecent);
    DzAppSettings settings((QLatin1String(kSettings)));
    settings.setStringValue(QLatin1String(kRecent), recent.join('\n'));
    const QString text = m_path->currentText();
    m_path->clear();
    m_path->addItems(recent);
    m_path->setEditText(text);
}

// ---- search --------------------------------------------------------------------------------

void DzContentLibraryPane::search(const QString& text)
{
    if (text.trimmed().isEmpty()) {
        m_slice.stop();
        return m_folder.isEmpty() ? showRoots() : showFolder(m_folder);
    }
    if (!m_walk)
        m_walk.reset(new ContentWalk(contentDirectories()));
    showFound();
    if (!m_walk->isDone())
        m_slice.start();
}

void DzContentLibraryPane::searchOn()
{
    if (m_walk)
        m_walk->goOn(kWalkSliceMs);
    const bool done = !m_walk || m_walk->isDone();
    // Not after every slice: a list of all is made each time.
    if (done || m_walk->found().size() > 2 * m_foundShown + 100)
        showFound();
    if (done)
        m_slice.stop();
}

void DzContentLibraryPane::showFound()
{
    if (!m_walk)
        return;
    const QStringList words = m_search->text().split(' ', Qt::SkipEmptyParts);
    m_foundShown = m_walk->found().size();
    show(m_walk->matching(words, order()),
        m_walk->isDone() ? tr("No pose has all these words in its name") : tr("Searching..."));
    const int count = m_model->rowCount();
    if (!m_walk->isDone())
        tell(tr("%1 so far...").arg(count));
    else
        tell(count == 1 ? tr("1 pose found in all content directories")
                        : tr("%1 poses found in all content directories").arg(count));
}
