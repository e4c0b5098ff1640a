#include "figure/optimize_editing.h"

#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/hip_centre.h"
#include "figure/prop_origin.h"
#include "figure/quillonrotorderdlg.h"
#include "figure/selected_figure.h"
#include "ground/plugin_settings.h"

#include "dzbone.h"
#include "dzskeleton.h"

namespace quillon {

static bool optimizeFigure(DzSkeleton* figure, CentreChoice centre, DzTime time)
{
    DzBone* hip = isSupportedFigure(figure) ? findBone(QLatin1String("hip"), figure) : nullptr;
    if (!hip)
        return false;
    switch (centre) {
    case HipAsCentre:
        return hipAsCentre(figure, hip, time);
    case RootAsCentre:
        return rootAsCentre(figure, hip, time);
    case NoCentre:
        break;
    }
    return false;
}

static bool optimizeProp(DzNode* node)
{
    DzRotationOrder order = node->getRotationOrder();
    const HeldNode held(node);
    if (!runRotationOrderDialog(&order) || held.isGone())
        return false;
    if (!setPropOrigin(node, order, OriginChoice(pluginSettings().propOrigin)))
        return false;
    setTranslationNudge(node, pluginSettings().translationNudge);
    return true;
}

bool optimizeEditing(DzNode* node, DzSkeleton* figure, CentreChoice centre, DzTime time)
{
    if (figure)
        return optimizeFigure(figure, centre, time);
    return node && optimizeProp(node);
}

} // namespace quillon
