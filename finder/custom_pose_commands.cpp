#include "finder/custom_pose_commands.h"

#include "figure/selected_figure.h"
#include "finder/index_saves.h"
#include "finder/pose_browser.h"
#include "finder/pose_identify.h"
#include "finder/pose_index.h"
#include "finder/pose_pair_products.h"
#include "finder/pose_ranks.h"
#include "finder/pose_signature.h"
#include "ground/host_calls.h"
#include "ground/message_boxes.h"
#include "ground/plugin_settings.h"
#include "ground/save_result.h"
#include "ground/status_message.h"
#include "ground/whole_file.h"
#include "posefile/custom_library.h"
#include "posefile/pose_writer.h"

#include "dzapp.h"
#include "dzmainwindow.h"
#include "dzpane.h"
#include "dzpanemgr.h"
#include "dzskeleton.h"

#include <QFile>
#include <QFileDialog>

namespace quillon {

bool isCustomPose(int entry)
{
    const PoseIndexEntry* e = poseEntry(entry);
    return e && e->isCustom;
}

// ---- saving

static QString askForFile(const QString& proposed)
{
    return QFileDialog::getSaveFileName(dzApp->getDialogParent(), QString(), proposed,
        QLatin1String("Custom Pose Library Files (*.duf)"));
}

// The dialog asks before it replaces a file, but it only knows the name that was typed. When the
// suffix makes that the name of a file, it is to ask about the whole name.
static QString askForPoseFile()
{
    QString chosen = askForFile(customLibraryFolder());
    while (!chosen.isEmpty()) {
        const QString name = customPoseFileName(chosen);
        const At at = whatIsAt(name);
        if (name == chosen || at == At::Nothing || at == At::SomethingElse)
            return name;
        chosen = askForFile(name);
    }
    return chosen;
}

static int entryWithPath(const QString& path)
{
    for (int entry = 0; entry < poseCount(); ++entry) {
        if (poseEntry(entry)->path == path)
            return entry;
    }
    return -1;
}

// The entry of that path is filled anew, also when its file had vanished: the index on disk has one
// entry a path. By the text that was written: that the file cannot be read just now must not spoil
// the entry.
static bool indexPose(const QString& path, const QByteArray& text, DzSkeleton* figure, DzTime time)
{
    int entry = entryWithPath(path);
    if (entry < 0)
        entry = appendPose(path);
    if (entry < 0)
        return true;
    entryToChange(entry)->hasSignature = false;
    identifyPoseText(entry, text);
    takeSignature(entry, figure, time);
    refreshCurrentRank(); // of a file that was replaced: its hash has changed
    return saveEntry(entry);
}

bool savePoseOf(DzSkeleton* figure, DzTime time)
{
    if (!figure) {
        showBox(Box::NoFigure);
        return true;
    }
    if (!ensureCustomLibraryFolder()) {
        showBox(Box::NoCustomFolder);
        return true;
    }
    const HeldNode held(figure);
    const QString path = askForPoseFile();
    if (path.isEmpty() || held.isGone())
        return true;
    const bool male = !figure->getName().contains(QLatin1String("female"), Qt::CaseInsensitive);
    const bool compressed = true;
    const QByteArray text = textOfPose(figure, time, male);
    const bool saved = writePoseText(text, path, compressed) && indexPose(path, text, figure, time);
    refreshPane();
    return saved;
}

// ---- deleting

static void removeAndSave(int entry)
{
    const QString path = poseEntry(entry)->path;
    removeEntry(entry);
    qint32& position = pluginSettings().currentPose;
    if (entry < position)
        --position;
    if (position >= poseCount())
        position = poseCount() > 0 ? 0 : -1;
    refreshCurrentRank();
    forgetMatch(entry);
    noteSaveResult(saveDeletion(path));
}

bool deletePose(int entry, DzSkeleton* figure)
{
    if (!isCustomPose(entry) || !isDeletableCustomPose(poseEntry(entry)->path))
        return false;
    const QString path = poseEntry(entry)->path;
    const HeldNode held(figure);
    if (!showBox(Box::DeletePose, poseFileTitle(path, false)) || held.isGone())
        return false;
    if (QFile::remove(path))
        removeAndSave(entry);
    return true;
}

// ---- the folder

static void showContentLibrary()
{
    DzMainWindow* window = dzApp->getInterface();
    DzPaneMgr* panes = window ? window->getPaneMgr() : nullptr;
    if (DzPane* pane = panes ? panes->findPane(QLatin1String("DzContentLibraryPane")) : nullptr)
        pane->showPane();
}

void browseToPoseFolder(const QString& path)
{
    const QString product = productFolder(path);
    const QString shown = product.isEmpty() ? path : product;
    const int slash = shown.lastIndexOf(QLatin1Char('/'));
    showFolderInContentPane(slash < 0 ? QString() : shown.left(slash));
    showContentLibrary();
}

} // namespace quillon
