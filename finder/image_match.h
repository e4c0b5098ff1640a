// image_match.h - whether a part of a pose is turned nearly as another, for browsing, and a hip
// nearly as one of a whole round of hips.
//
// A rotation is known by its images of the axes Y and Z. Two are near if for neither axis the score
// of the distance, in single precision, says "too far"; a NaN never does.
// A search of the round goes by balls about a few neighbours each: what lies outside of a ball by
// more than any that are near can be apart is near to none in it. A ring about all of them, which
// is thin as a turn keeps heights and distances from the upright axis, does the same for most hips
// at once. All others are held against each, so rings and balls decide nothing.
// Owns: nothing. Without Qt.
#pragma once

namespace quillon {

const float kBrowseTolerance = 0.75f;
const int kYawCount = 360;

struct Images {
    float y[3], z[3];
};
bool areNear(const Images& a, const Images& b);

// The images that the host should make of a quaternion of unit length, by its convention; NaNs for
// any other. With them two rotations may be near unless they are not: false is sure.
Images guessedImages(double x, double y, double z, double w);
bool mayBeNear(const Images& guess, const Images& b);

const int kBallYaws = 6;
const int kBallLanes = 4;
const int kBallRows = kYawCount / (kBallYaws * kBallLanes);

// Four balls side by side: for each axis, where the centres are and the squares of two distances.
struct BallRow {
    float centre[2][3][kBallLanes];
    float outside[2][kBallLanes]; // further from the centre nothing is near to one in the ball
    float inside[2][kBallLanes]; // closer everything is near to each; negative: there is no such
};

struct Span {
    float low, high;
};
struct Ring {
    Span height, radius; // above the ground plane, from the upright axis
};

struct YawImages {
    Images at[kYawCount];
    BallRow rows[kBallRows];
    Ring rings[2]; // for each axis
};
void makeBalls(YawImages* yaws); // and rings, about the images that stand there
bool isNearSome(const YawImages& yaws, const Images& hip);
bool mayBeNearSome(const YawImages& yaws, const Images& guess); // false is sure

} // namespace quillon
