// custom_pose_commands.h - saves a pose into the custom library, deletes one of it, and shows where
// an installed pose comes from. The pose index is kept in step and saved.
#pragma once

#include "ground/host_types.h"

#include <QString>

class DzSkeleton;

namespace quillon {

bool isCustomPose(int entry); // false outside the index

// Asks for a file and writes the figure's pose into it. Shows a box and does nothing without a
// figure or a library folder; a figure that is gone when the dialog closes is not saved. The file
// takes the place of its own entry in the index, else a new one at the end; when the index is full
// it is not indexed. A name without ".duf" that would replace a file with it is asked for again.
// False when the pose or the index cannot be written.
[[nodiscard]] bool savePoseOf(DzSkeleton* figure, DzTime time);

// Asks first: true when the answer was Yes. Without a question, false for what is no custom pose
// or may not be deleted (isDeletableCustomPose). figure: that of the press, may be null; when it is
// gone by then, nothing happens and the result is false. The entry goes with its file; a file that
// cannot be deleted keeps it. A position behind the last entry goes to the first, -1 when there is
// none. The current rank, the count of matches and the ordinal follow.
bool deletePose(int entry, DzSkeleton* figure);

// Opens the folder of the pose file in the host's content library; for a pose of the maker's
// pose-pair products, the product's own folder.
void browseToPoseFolder(const QString& path);

} // namespace quillon
