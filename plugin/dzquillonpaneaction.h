// dzquillonpaneaction.h - the action through which the host lists, shows and hides the pane.
#pragma once

#include "dzaction.h"

class DzQuillonPaneAction : public DzPaneAction {
    Q_OBJECT
public:
    DzQuillonPaneAction();
};
