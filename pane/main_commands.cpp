#include "pane/main_commands.h"

#include "figure/bake_pose.h"
#include "figure/optimize_editing.h"
#include "figure/pose_limits.h"
#include "figure/reset_pose.h"
#include "figure/selected_figure.h"
#include "finder/custom_pose_commands.h"
#include "finder/pose_scanner.h"
#include "ground/message_boxes.h"
#include "ground/save_result.h"
#include "ground/status_message.h"
#include "pane/page_state.h"
#include "pane/quillonsettingsdlg.h"
#include "posefile/reference_pose.h"
#include "posefile/swap_symmetrize.h"
#include "services/product_patcher.h"

#include "dznode.h"
#include "dzskeleton.h"

namespace quillon {

bool memorizeReference(const PressContext& press)
{
    noteSaveResult(memorizeReferenceOf(press.figure, press.time));
    return true;
}

bool showReference(const PressContext& press)
{
    showReferenceOn(press.figure, press.time);
    return true;
}

bool openPicker(const PressContext&)
{
    pageState().picker = true;
    return true;
}

bool resetBody(const PressContext& press)
{
    resetPose(press.figure, ResetBody, press.time);
    return true;
}

bool resetExtremities(const PressContext& press)
{
    resetPose(press.figure, ResetExtremities, press.time);
    return true;
}

bool resetSelected(const PressContext& press)
{
    resetPose(press.figure, ResetSelected, press.time);
    return true;
}

bool optimizeForHip(const PressContext& press)
{
    return optimizeEditing(press.node, press.figure, HipAsCentre, press.time);
}

bool optimizeForRoot(const PressContext& press)
{
    return optimizeEditing(press.node, press.figure, RootAsCentre, press.time);
}

bool optimizeNode(const PressContext& press)
{
    return optimizeEditing(press.node, press.figure, NoCentre, press.time);
}

// Mirrors a node at the plane X = 0.
static void mirrorNode(DzNode* node, DzTime time)
{
    const DzQuat rotation = node->getWSRot(time);
    const DzVec3 position = node->getWSPos(time);
    node->setWSRot(time, DzQuat(rotation.m_x, -rotation.m_y, -rotation.m_z, rotation.m_w, false));
    node->setWSPos(time, DzVec3(-position.m_x, position.m_y, position.m_z));
}

static bool swap(const PressContext& press, SwapReach reach)
{
    if (press.figure)
        return swapOrSymmetrize(press.figure, reach, press.time, false);
    mirrorNode(press.node, press.time);
    return true;
}

bool swapPose(const PressContext& press)
{
    return swap(press, BonesBelowToo);
}

bool swapSelected(const PressContext& press)
{
    return swap(press, SelectedBonesOnly);
}

bool symmetrizePose(const PressContext& press)
{
    return swapOrSymmetrize(press.figure, BonesBelowToo, press.time, true);
}

bool symmetrizeSelected(const PressContext& press)
{
    return swapOrSymmetrize(press.figure, SelectedBonesOnly, press.time, true);
}

bool clampFaceLimits(const PressContext& press)
{
    setPoseLimits(press.figure, true, FaceLimits, press.time);
    return true;
}

bool clampBodyLimits(const PressContext& press)
{
    setPoseLimits(press.figure, true, BodyLimits, press.time);
    return true;
}

bool releaseLimits(const PressContext& press)
{
    setPoseLimits(press.figure, false, AllLimits, press.time);
    return true;
}

bool limitTranslations(const PressContext& press)
{
    limitBoneTranslations(press.figure, kTranslationRangeCm, press.time);
    return true;
}

bool zeroTranslations(const PressContext& press)
{
    limitBoneTranslations(press.figure, 0, press.time);
    return true;
}

bool bakeBody(const PressContext& press)
{
    bakePose(press.figure, BakeBody, press.time);
    return true;
}

bool bakeFace(const PressContext& press)
{
    bakePose(press.figure, BakeFace, press.time);
    return true;
}

bool patchInstalledProducts(const PressContext&)
{
    if (!showBox(Box::PatchProducts))
        return false;
    if (patchProducts()) {
        showStatusMessage(QLatin1String("\r\n\r\nProducts patching succeessful!\r\n\r\n"));
        showBox(Box::ProductsPatched);
    } else {
        showStatusMessage(QLatin1String("\r\nNo products requiring\r\na patch were found\r\n\r\n"));
        showBox(Box::NothingToPatch);
    }
    return true;
}

bool saveToCustomLibrary(const PressContext& press)
{
    const bool saved = savePoseOf(supportedFigureAnywhereOf(press.node), press.time);
    clearStatusMessage();
    noteSaveResult(saved);
    return true;
}

bool scanAfterQuestion(const PressContext& press)
{
    const HeldNode held(press.figure);
    clearStatusMessage();
    if (showBox(Box::ScanPoses) && !held.isGone())
        scanPosesOn(press.figure, press.time);
    return true;
}

bool openSettings(const PressContext&)
{
    const bool saved = showSettings();
    clearStatusMessage();
    noteSaveResult(saved);
    return true;
}

} // namespace quillon
