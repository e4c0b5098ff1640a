// plugin_settings.h - the values that outlive a run of the host, and their file.
//
// File: a 32-bit format version (3), then the fields in the order of the record, packed, 58 bytes
// in all. Flags are one byte each: written as 0 or 1, read as on when not 0. Versions 1 and 2 lack
// fields; a version of 4 or more is not read.
// Owns: the one record, and what is known of the file. Everything that reads or changes a setting
// does it here.
#pragma once

#include <QByteArray>

namespace quillon {

// Index of a similarity flag, and number of its square on the figure silhouette.
enum BodyArea {
    AreaTorso,
    AreaLeftShin,
    AreaRightShin,
    AreaLeftThigh,
    AreaRightThigh,
    AreaLeftArm,
    AreaRightArm,
    AreaLeftForearm,
    AreaRightForearm,
    AreaHip
};
const int kBodyAreaCount = 10;

// Index of a lock: upper body, lower body, feet, expression, left hand, right hand.
const int kPartLockCount = 6;

enum RankFilterBit { ShowUnranked = 1, ShowFavorite = 2, ShowHidden = 4, ShowCustomLibrary = 8 };

struct PluginSettings {
    // Areas that must be similar to the reference pose for a pose to be shown.
    bool similarity[kBodyAreaCount]
        = {true, false, false, true, true, false, false, false, false, true};
    bool includeFemale = true;
    bool includeMale = true;
    qint32 currentRank = 0;
    bool partLocks[kPartLockCount] = {false, false, false, false, false, false};
    // A copy of the first set, taken by some commands.
    bool similarityCopy[kBodyAreaCount]
        = {true, false, false, true, true, false, false, false, false, true};
    qint32 rankFilter = ShowUnranked | ShowFavorite | ShowHidden | ShowCustomLibrary;
    qint32 propOrigin = 0; // 0 no change, 1 imported origin, 2 object centre, 3 world centre
    float translationNudge = 0.5f;
    bool allowPoseViolation = true;
    bool allowFaceViolation = false;
    bool allowTranslations = true;
    bool ignorePosePairs = false;
    bool muteUpdateNotice = false;
    qint32 currentPose = -1; // position in the pose index; -1: none
};

PluginSettings& pluginSettings();

// False if there is no readable file; all fields then keep their values. A file cut short leaves
// what it lacks as it was.
bool loadSettings();
// Fields that changed since the last load or save; the others stay in the file as another host may
// have saved them, and in the record as they are. One of a newer version is copied to the backups
// and replaced. False when the folder or the file cannot be written, or not all of it can be read;
// the file is then as it was.
[[nodiscard]] bool saveSettings();
// The same for an index file in which the applied pose has another position than in the record.
[[nodiscard]] bool saveSettings(qint32 positionOnDisk);

QByteArray defaultSettingsFile();

} // namespace quillon
