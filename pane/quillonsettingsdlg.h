// quillonsettingsdlg.h - the modal dialog of the five switches of the settings.
#pragma once

#include "dzbasicdialog.h"

class QCheckBox;

class QuillonSettingsDlg : public DzBasicDialog {
    Q_OBJECT
public:
    // Boxes show the settings as they are. Building the dialog makes the Pose Finder set up its
    // tables anew at the next search.
    explicit QuillonSettingsDlg(QWidget* parent);

    void store() const; // the boxes into the settings

private:
    void fitLabels();

    enum { BoxCount = 5 };
    QCheckBox* m_boxes[BoxCount];
};

namespace quillon {

// Runs the dialog; Ok stores and saves. Nothing happens when the host has no main window. False
// when the settings cannot be saved.
bool showSettings();

} // namespace quillon
