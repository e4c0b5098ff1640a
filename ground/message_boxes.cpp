#include "ground/message_boxes.h"

#include "dzapp.h"

#include <cstddef>
#include <iterator>

namespace quillon {

static const QMessageBox::Icon kWarning = QMessageBox::Warning;
static const QMessageBox::Icon kCritical = QMessageBox::Critical;
static const QMessageBox::Icon kQuestion = QMessageBox::Question;
static const QMessageBox::Icon kInformation = QMessageBox::Information;

// clang-format off
static const BoxRow kBoxes[] = {
    {Box::CrashWarning, kWarning, BoxButtons::Ok, BoxParent::None, "Quillon plugin - Warning",
     "Something went wrong the last time the Quillon plugin was loaded\n"
     "and Daz Studio crashed. If the problem persists,\n"
     "remove the Quillon.dll file from the 'plugins' folder\n"
     "in the main Daz Studio folder installation directory"},
    {Box::NoFigure, kWarning, BoxButtons::Ok, BoxParent::HostDialog, "Error",
     "Please select a Genesis 8 figure first."},
    {Box::InvalidSelection, kCritical, BoxButtons::Ok, BoxParent::None, "Error",
     "Invalid selection"},
    {Box::ReplaceReference, kQuestion, BoxButtons::YesNo, BoxParent::None, "Quillon",
     "There is already a memorized reference pose. Do you want to replace it with the currently "
     "selected figure pose?"},
    {Box::PatchProducts, kQuestion, BoxButtons::YesNo, BoxParent::None, "Quillon",
     "Products by Brannoc Ltd will now be patched to the latest version.\n"
     "This will overwrite the original files with new files.\n"
     "If you need to revert back to the original version of a product after\n"
     "it is patched, you will need to install it again. Proceed?"},
    {Box::NothingToPatch, kInformation, BoxButtons::Ok, BoxParent::HostDialog, "Complete",
     "No products requiring a patch were found"},
    {Box::ProductsPatched, kInformation, BoxButtons::Ok, BoxParent::HostDialog, "Success",
     "Products patching succeessful!"},
    {Box::ScannerNeedsFigure, kWarning, BoxButtons::Ok, BoxParent::HostDialog, "Error",
     "The scanner needs a Genesis 8 figure as a reference.\n"
     "Please load and select a Genesis 8 figure and retry."},
    {Box::ScanPoses, kQuestion, BoxButtons::YesNo, BoxParent::None, "Quillon",
     "This procedure is only necessary once, before using the\n"
     "'Pose Finder' tool for the first time, or after you have installed\n"
     "new pose products and you want them to be included when\n"
     "you use the 'Pose Finder' tool. Proceed?"},
    {Box::FirstScan, kQuestion, BoxButtons::YesNo, BoxParent::None, "Quillon - Pose Finder Tool",
     "Because this is the first time you are using this tool,\n"
     "inizialization is needed. It may take some time, but\n"
     "it can be stopped and done later. Proceed?"},
    {Box::ScanDone, kWarning, BoxButtons::Ok, BoxParent::HostDialog, "Info",
     "Success! Indexed pose files: %1"},
    {Box::ScanAborted, kWarning, BoxButtons::Ok, BoxParent::HostDialog, "Info",
     "Scanning aborted"},
    {Box::NoContent, kWarning, BoxButtons::Ok, BoxParent::HostDialog, "Error",
     "None of the content folders can be opened.\nIs a drive missing? Nothing was changed."},
    {Box::NoCustomFolder, kWarning, BoxButtons::Ok, BoxParent::HostDialog, "Error",
     "Could not find Custom Pose Library folder."},
    {Box::DeletePose, kQuestion, BoxButtons::YesNo, BoxParent::None,
     "Quillon - Delete Custom Pose",
     "Pose named '%1' will be permanently deleted. Are you sure?"},
};
// clang-format on

static_assert(std::size(kBoxes) == std::size_t(Box::DeletePose) + 1, "one row per box");

const char kAboutTitle[] = "About Quillon plugin";

const BoxRow& boxRow(Box box)
{
    const BoxRow& row = kBoxes[int(box)];
    Q_ASSERT_X(row.box == box, "boxRow", "rows stand in the order of the enumeration");
    return row;
}

static QMessageBox::StandardButtons standardButtons(BoxButtons buttons)
{
    if (buttons == BoxButtons::YesNo)
        return QMessageBox::Yes | QMessageBox::No;
    return QMessageBox::Ok;
}

static QWidget* parentWidget(BoxParent parent)
{
    return parent == BoxParent::HostDialog && dzApp ? dzApp->getDialogParent() : nullptr;
}

bool showBox(Box box, const QString& argument)
{
    const BoxRow& row = boxRow(box);
    QString text = QString::fromLatin1(row.text);
    text.replace(QLatin1String("%1"), argument);
    QMessageBox window(row.icon, QString::fromLatin1(row.title), text, standardButtons(row.buttons),
        parentWidget(row.parent));
    window.setTextFormat(Qt::PlainText); // a pose may be named like a piece of markup
    const int answer = window.exec();
    return answer == QMessageBox::Yes || answer == QMessageBox::Ok;
}

QString aboutText(const QString& version)
{
    return QString::fromLatin1("Quillon v") + version
        + QString::fromLatin1("\n\nAll rights in this plug-in are held by Brannoc Ltd. "
                              "It may be used with any lawful copy of the host application.");
}

} // namespace quillon
