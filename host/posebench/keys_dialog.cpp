#include "host/posebench/keys_dialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace quillon {

namespace {

struct KeyRow {
    const char* where; // null: as the row above
    const char* keys;
    const char* effect;
};

const KeyRow kRows[] = {
    {"Picture", "Click", "selects a bone; Ctrl adds to the selection, the floor clears it"},
    {nullptr, "Drag", "turns the view; with Shift, or the middle button, moves it"},
    {nullptr, "Right drag, wheel", "goes closer or further away"},
    {nullptr, "F, Ctrl+F", "shows all of the selection, wherever it is"},
    {nullptr, "Home, Ctrl+Home", "the first view again"},
    {nullptr, "Drop of a .duf", "applies the pose to the selected figure; several in their order"},
    {"Poses", "Ctrl+Right, Ctrl+Left", "next and previous pose of the Pose Finder"},
    {nullptr, "Ctrl+Shift+Left, Ctrl+Shift+Right", "first and last pose"},
    {nullptr, "Ctrl+Shift+F", "makes the current pose a favourite, or unranked again"},
    {"Sliders", "Up, Down", "from slider to slider"},
    {nullptr, "Left, Right", "changes the value by a step, with Shift by ten"},
    {nullptr, "Enter", "types a value, folds a group"},
    {nullptr, "L, C", "locks the slider, switches its limits"},
    {nullptr, "Double click", "back to the value at rest"},
    {"Time", "Left, Right, Home, End", "moves the playhead when the ruler has the keyboard"},
    {nullptr, "Ctrl+P", "plays, and stops"},
    {"Content library", "Enter, double click", "opens a folder, applies a pose"},
    {nullptr, "Backspace", "the folder above"},
    {"All", "Tab, Shift+Tab", "to the next and the previous control"},
    {nullptr, "Ctrl+Z, Ctrl+Shift+Z", "undoes and redoes"},
    {nullptr, "Ctrl+1 to Ctrl+4", "loads a figure"},
    {nullptr, "F1", "the guide"},
};

} // namespace

static QString tableText()
{
    QString text = "<table cellspacing=\"0\" cellpadding=\"3\">";
    for (const KeyRow& row : kRows)
        text += QString("<tr><td style=\"white-space: nowrap; padding-right: 14px\"><b>%1</b></td>"
                        "<td style=\"white-space: nowrap; padding-right: 14px\">%2</td>"
                        "<td>%3</td></tr>")
                    .arg(row.where ? row.where : "", QString(row.keys), QString(row.effect));
    return text + "</table>";
}

void showKeysDialog(QWidget* parent)
{
    QDialog dialog(parent);
    dialog.setWindowTitle(QObject::tr("Mouse and Keys"));
    QTextBrowser* text = new QTextBrowser;
    text->setHtml(tableText());
    QDialogButtonBox* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QVBoxLayout* layout = new QVBoxLayout(&dialog);
    layout->addWidget(text, 1);
    layout->addWidget(buttons);
    QObject::connect(buttons, SIGNAL(rejected()), &dialog, SLOT(reject()));
    dialog.resize(QSize(900, 680).boundedTo(parent->window()->size()));
    dialog.exec();
}

} // namespace quillon
