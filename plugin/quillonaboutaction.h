// quillonaboutaction.h - shows the plug-in's version. Usable before there is a pane; version and
// icon, which the pane's construction makes, are then missing from the box.
#pragma once

#include "dzaction.h"

class QuillonAboutAction : public DzAction {
    Q_OBJECT
public:
    QuillonAboutAction();

protected:
    void executeAction() override;
};
