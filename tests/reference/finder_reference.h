// finder_reference.h - the Pose Finder's searches in their literal form: every entry against every
// earlier one, every rotation taken anew, every record walked through. Slow and plain; what finder/
// answers faster is held against it. Works on the pose index and the yaw table of finder/.
#pragma once

#include "finder/pose_index.h"
#include "finder/pose_ranks.h"

#include <QByteArray>

#include <vector>

namespace quillon {
namespace reference {

float partSimilarity(const DzQuat& a, const DzQuat& b, float tolerance);
bool isMirrorOf(int entryA, int entryB);
bool isSimilarPose(int entryA, int entryB);

// The three quadratic passes; they set hashes to 0.
void markDuplicates();
void markMirrored();
void markSimilar();

float bestYawSimilarity(const DzQuat& hip);
float browseScore(int entry);

int rankOf(int entry, const std::vector<RankRecord>& records);
unsigned bodyWordsIn(const QByteArray& bytes);
// The filters of the session and the settings, one after the other.
bool passes(int entry, const std::vector<RankRecord>& records);
std::vector<int> matches(const std::vector<RankRecord>& records);

quint32 figureCodeOf(const QByteArray& bytes, const QString& path);

} // namespace reference
} // namespace quillon
