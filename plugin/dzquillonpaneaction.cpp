#include "plugin/dzquillonpaneaction.h"

DzQuillonPaneAction::DzQuillonPaneAction()
    : DzPaneAction(QLatin1String("DzQuillonPane"))
{
}
