#include "services/patch_table.h"

#include "finder/pose_pair_products.h"

namespace quillon {

// clang-format off
const PatchRow kPatchRows[kPatchRowCount] = {
    {"001", nullptr, 26, PatchScript::FirstDance},
    {"002", nullptr, 33, PatchScript::BenchForTwo},
    {"003", nullptr, 31, PatchScript::SundayMorning},
    {"004", nullptr, 73, PatchScript::CarriedAway},
    {"005", nullptr, 25, PatchScript::SparringPartners},
    {"006", nullptr, 25, PatchScript::CampfireStories},
    {"007", nullptr, 73, PatchScript::TangoNight},
    {"008", nullptr, 25, PatchScript::PicnicHours},
    {"009", nullptr, 25, PatchScript::WelcomeHome},
    {"010", nullptr, 25, PatchScript::AcrobatDuo},
    {"011", nullptr, 25, PatchScript::SideBySide},
    {nullptr, "Brannoc/Light Rigs/Key Light %1.dse",  12, PatchScript::LightRigs},
    {nullptr, "Brannoc/Light Rigs/Fill Light %1.dse", 12, PatchScript::LightRigs},
    {nullptr, "Brannoc/Light Rigs/Rim Light %1.dse",   8, PatchScript::LightRigs},
    {nullptr, "Brannoc/Light Rigs/Backdrop %1.dse",    6, PatchScript::LightRigs},
    {nullptr, "Brannoc/Light Rigs/Ambient %1.dse",     4, PatchScript::LightRigs},
    {nullptr, "Brannoc/Camera Aids/Align Camera.dse",  1, PatchScript::CameraAids},
};
// clang-format on

QString scriptName(const PatchRow& row, int i)
{
    QString name = row.product ? productPath(QLatin1String(row.product)) + QLatin1String("%1.dse")
                               : QString::fromLatin1(row.name);
    return name.replace(
        QLatin1String("%1"), QString::fromLatin1("%1").arg(i, 3, 10, QLatin1Char('0')));
}

} // namespace quillon
