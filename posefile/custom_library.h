// custom_library.h - where the user's own pose presets lie, and how one of them is named.
// Owns: nothing.
#pragma once

#include <QString>

namespace quillon {

// A fixed part of every path in the library, whatever the host's data folder is called.
extern const char kCustomLibraryPart[];

// With its last slash; empty when there is no data folder.
QString customLibraryFolder();
[[nodiscard]] bool ensureCustomLibraryFolder(); // false: there is none and it cannot be created

// Case-sensitive. A pose saved elsewhere is no custom pose.
bool isCustomLibraryPath(const QString& path);

// False for a file that a damaged or forged index may name: only a pose preset can be deleted, by a
// path without "..", and only one whose folder, links resolved, is a custom library or lies in it.
bool isDeletableCustomPose(const QString& path);

// ".duf" is added when missing: without it no scan would find the file.
QString customPoseFileName(const QString& chosen);

} // namespace quillon
