// patch_scripts.h - the scripts that the product patcher installs, as blocks of bytes.
// They are data here: nothing reads or makes them, and the host's cipher is its own. The blocks
// below are fillers, bytes without a meaning; a release puts in those that the products' builds
// deliver.
#pragma once

namespace quillon {

enum class PatchScript {
    Shared, // over every script, before the product's own
    FirstDance,
    BenchForTwo,
    SundayMorning,
    CarriedAway,
    SparringPartners,
    CampfireStories,
    TangoNight,
    PicnicHours,
    WelcomeHome,
    AcrobatDuo,
    SideBySide,
    LightRigs,
    CameraAids
};

struct ScriptBlock {
    PatchScript script;
    const char* bytes; // may hold zeros
    int length; // > 0
};

const ScriptBlock& scriptBlock(PatchScript script);

} // namespace quillon
