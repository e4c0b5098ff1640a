// mirror_names.h - the controls whose names or values change when a pose is mirrored, beside those
// of the face whose names tell their side. Which of them are used when: posefile/mirror_tables.h.
#pragma once

namespace quillon {

extern const char* const kPairedLimbs[12]; // arm and leg controls
extern const char* const kPairedBiceps[2]; // one for each arm
extern const char* const kNegatedFaceG8[4]; // side-to-side controls of the face
extern const char* const kNegatedFaceG81[1];
extern const char* const kNegatedBody[5]; // side-to-side and twist controls of the body

} // namespace quillon
