// message_boxes.h - every message box of the plug-in: title, text, icon, buttons and parent.
// Boxes are modal; the calling function goes on when they are closed.
#pragma once

#include <QMessageBox>

namespace quillon {

enum class Box {
    CrashWarning,
    NoFigure,
    InvalidSelection,
    ReplaceReference,
    PatchProducts,
    NothingToPatch,
    ProductsPatched,
    ScannerNeedsFigure,
    ScanPoses,
    FirstScan,
    ScanDone, // %1: the number of poses
    ScanAborted,
    NoContent,
    NoCustomFolder,
    DeletePose, // %1: the pose's name
};

enum class BoxButtons { Ok, YesNo };
enum class BoxParent { None, HostDialog };

struct BoxRow {
    Box box;
    QMessageBox::Icon icon;
    BoxButtons buttons;
    BoxParent parent;
    const char* title;
    const char* text;
};

const BoxRow& boxRow(Box box);

// argument stands for the text's %1. True when the answer was Yes or Ok.
bool showBox(Box box, const QString& argument = QString());

// The text of the About box; version as versionText() has it.
QString aboutText(const QString& version);
extern const char kAboutTitle[];

} // namespace quillon
