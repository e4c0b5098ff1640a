// body_shape_table.h - the lumps of which the stand-in body is made, left side and middle.
// Centimetres in the rest pose of skeleton.json; a row of a left bone stands for both sides. The
// numbers were set by eye on rendered pictures. Included by body_shape.cpp only.
#pragma once

namespace quillon {

enum BuildPart { Fixed, Shoulders, Chest, Waist, Hips, Limbs, Bust, Pecs, Jaw, Bun };
enum LumpKind { Flesh, Hair, Carve };

// Along a bone, from its centre to its end.
struct ConeRow {
    const char* bone;
    float ra, rb, blend;
    BuildPart part;
};

struct EllipsoidRow {
    const char* bone;
    float x, y, z, rx, ry, rz, blend;
    BuildPart part;
    LumpKind kind;
};

// clang-format off
static const ConeRow kConeRows[] = {
    // legs
    {"lThighBend",    9.2f, 7.3f, 2.0f, Limbs},
    {"lThighTwist",   7.3f, 5.1f, 0.6f, Limbs},
    {"lShin",         5.0f, 2.9f, 0.6f, Limbs},
    {"lFoot",         3.3f, 2.6f, 2.0f, Limbs},
    {"lMetatarsals",  2.6f, 1.7f, 2.0f, Fixed},
    {"lBigToe",       1.35f, 1.25f, 0.5f, Fixed},
    {"lBigToe_2",     1.25f, 0.95f, 0.4f, Fixed},
    {"lSmallToe1",    1.00f, 0.90f, 0.4f, Fixed},
    {"lSmallToe1_2",  0.90f, 0.70f, 0.3f, Fixed},
    {"lSmallToe2",    0.95f, 0.85f, 0.4f, Fixed},
    {"lSmallToe2_2",  0.85f, 0.65f, 0.3f, Fixed},
    {"lSmallToe3",    0.90f, 0.80f, 0.4f, Fixed},
    {"lSmallToe3_2",  0.80f, 0.60f, 0.3f, Fixed},
    {"lSmallToe4",    0.85f, 0.75f, 0.4f, Fixed},
    {"lSmallToe4_2",  0.75f, 0.60f, 0.3f, Fixed},
    // arms
    {"lCollar",       4.0f, 4.1f, 3.0f, Shoulders},
    {"lShldrBend",    4.6f, 4.0f, 1.5f, Limbs},
    {"lShldrTwist",   4.0f, 3.3f, 0.5f, Limbs},
    {"lForearmBend",  3.4f, 3.0f, 0.5f, Limbs},
    {"lForearmTwist", 3.0f, 2.1f, 0.5f, Limbs},
    // hands
    {"lCarpal1",      1.45f, 1.05f, 1.0f, Fixed},
    {"lCarpal2",      1.50f, 1.10f, 1.0f, Fixed},
    {"lCarpal3",      1.45f, 1.05f, 1.0f, Fixed},
    {"lCarpal4",      1.35f, 0.95f, 1.0f, Fixed},
    {"lThumb1",       1.45f, 1.10f, 0.8f, Fixed},
    {"lThumb2",       1.05f, 0.92f, 0.3f, Fixed},
    {"lThumb3",       0.90f, 0.68f, 0.3f, Fixed},
    {"lIndex1",       0.98f, 0.85f, 0.3f, Fixed},
    {"lIndex2",       0.84f, 0.76f, 0.2f, Fixed},
    {"lIndex3",       0.76f, 0.58f, 0.2f, Fixed},
    {"lMid1",         1.00f, 0.87f, 0.3f, Fixed},
    {"lMid2",         0.86f, 0.78f, 0.2f, Fixed},
    {"lMid3",         0.78f, 0.60f, 0.2f, Fixed},
    {"lRing1",        0.96f, 0.84f, 0.3f, Fixed},
    {"lRing2",        0.82f, 0.75f, 0.2f, Fixed},
    {"lRing3",        0.74f, 0.57f, 0.2f, Fixed},
    {"lPinky1",       0.84f, 0.74f, 0.3f, Fixed},
    {"lPinky2",       0.72f, 0.65f, 0.2f, Fixed},
    {"lPinky3",       0.65f, 0.50f, 0.2f, Fixed},
    // neck
    {"neckLower",     5.9f, 5.2f, 3.0f, Limbs},
    {"neckUpper",     5.2f, 5.2f, 1.5f, Limbs},
};

static const EllipsoidRow kEllipsoidRows[] = {
    // trunk
    {"pelvis",       0.f,   94.5f, -0.3f,  15.6f, 10.0f, 9.6f,  5.f, Hips,  Flesh},
    {"pelvis",       7.0f,  90.5f, -5.6f,  7.6f,  8.0f,  6.6f,  4.f, Hips,  Flesh},
    {"pelvis",      -7.0f,  90.5f, -5.6f,  7.6f,  8.0f,  6.6f,  4.f, Hips,  Flesh},
    {"abdomenLower", 0.f,   103.0f, 0.6f,  13.4f, 9.0f,  9.0f,  5.f, Waist, Flesh},
    {"abdomenUpper", 0.f,   112.0f, 0.6f,  12.4f, 9.0f,  8.6f,  5.f, Waist, Flesh},
    {"chestLower",   0.f,   121.5f, 0.2f,  13.8f, 11.0f, 9.6f,  5.f, Chest, Flesh},
    {"chestUpper",   0.f,   131.0f, -1.6f, 15.0f, 10.0f, 9.6f,  5.f, Chest, Flesh},
    {"chestUpper",   0.f,   139.0f, -3.6f, 9.0f,  5.0f,  6.0f,  5.f, Shoulders, Flesh},
    {"lPectoral",    7.2f,  128.0f, 5.6f,  6.2f,  6.2f,  6.2f,  3.f, Bust,  Flesh},
    {"lPectoral",    7.0f,  130.5f, 4.2f,  7.4f,  5.4f,  4.6f,  3.f, Pecs,  Flesh},
    // shoulders and limbs
    {"lShldrBend",   16.0f, 134.6f, -3.f,  4.9f,  5.8f,  5.2f,  3.f, Shoulders, Flesh},
    {"lShldrTwist",  28.4f, 123.4f, -1.8f, 3.5f,  3.7f,  3.5f,  3.f, Limbs, Flesh},
    {"lForearmBend", 40.6f, 111.2f, -1.8f, 3.2f,  3.4f,  3.1f,  2.f, Limbs, Flesh},
    {"lShin",        12.9f, 48.2f,  2.0f,  4.0f,  4.6f,  3.8f,  2.f, Limbs, Flesh},
    {"lShin",        14.3f, 36.5f, -2.4f,  5.1f,  10.5f, 5.2f,  3.f, Limbs, Flesh},
    {"lHand",        55.4f, 96.6f,  1.1f,  2.5f,  2.8f,  2.4f,  1.2f, Fixed, Flesh},
    {"lFoot",        16.8f, 3.4f,  -4.6f,  3.0f,  3.4f,  3.4f,  2.f, Fixed, Flesh},
    {"lFoot",        18.3f, 3.2f,   3.0f,  3.4f,  3.0f,  6.0f,  2.f, Fixed, Flesh},
    {"lMetatarsals", 20.2f, 2.2f,   9.4f,  4.6f,  2.1f,  3.4f,  1.5f, Fixed, Flesh},
    // head
    {"head",         0.f,   161.0f, -0.6f, 7.4f,  8.8f,  9.0f,  1.5f, Fixed, Flesh},
    {"head",         0.f,   155.6f, 2.6f,  6.1f,  8.0f,  6.3f,  2.f, Fixed, Flesh},
    {"lowerJaw",     0.f,   151.6f, 3.6f,  5.0f,  4.4f,  5.2f,  2.f, Jaw,   Flesh},
    {"lowerJaw",     0.f,   149.3f, 6.9f,  2.3f,  1.8f,  1.9f,  1.5f, Jaw,  Flesh},
    {"head",         4.1f,  156.6f, 4.9f,  2.1f,  1.8f,  2.2f,  3.0f, Fixed, Flesh},
    {"head",        -4.1f,  156.6f, 4.9f,  2.1f,  1.8f,  2.2f,  3.0f, Fixed, Flesh},
    {"head",         2.9f,  161.6f, 6.7f,  2.8f,  0.9f,  1.3f,  1.2f, Fixed, Flesh},
    {"head",        -2.9f,  161.6f, 6.7f,  2.8f,  0.9f,  1.3f,  1.2f, Fixed, Flesh},
    {"head",         0.f,   158.0f, 8.2f,  0.65f, 2.8f,  1.1f,  0.9f, Fixed, Flesh},
    {"head",         0.f,   155.9f, 9.3f,  0.85f, 0.85f, 1.25f, 0.8f, Fixed, Flesh},
    {"head",         0.95f, 155.4f, 8.7f,  0.65f, 0.6f,  0.95f, 0.5f, Fixed, Flesh},
    {"head",        -0.95f, 155.4f, 8.7f,  0.65f, 0.6f,  0.95f, 0.5f, Fixed, Flesh},
    {"head",         0.f,   152.45f, 8.1f, 2.1f,  0.65f, 1.15f, 0.6f, Fixed, Flesh},
    {"lowerJaw",     0.f,   151.15f, 7.9f, 1.9f,  0.7f,  1.2f,  0.6f, Fixed, Flesh},
    {"lEar",         7.5f,  158.0f, -0.8f, 0.7f,  3.0f,  1.9f,  0.4f, Fixed, Flesh},
    {"head",         3.2f,  159.5f, 7.0f,  1.62f, 1.62f, 1.62f, 0.6f, Fixed, Flesh},
    {"head",        -3.2f,  159.5f, 7.0f,  1.62f, 1.62f, 1.62f, 0.6f, Fixed, Flesh},
    {"head",         0.f,   162.4f, -1.8f, 8.3f,  8.6f,  9.2f,  0.2f, Fixed, Hair},
    {"head",         0.f,   156.0f, -4.2f, 7.6f,  6.0f,  6.4f,  1.0f, Bun,   Hair},
    {"head",         0.f,   164.0f, -11.6f, 4.0f, 4.2f,  3.6f,  0.4f, Bun,   Hair},
    // openings
    {"head",         3.2f,  159.40f, 8.6f, 1.30f, 0.50f, 1.4f,  0.15f, Fixed, Carve},
    {"head",        -3.2f,  159.40f, 8.6f, 1.30f, 0.50f, 1.4f,  0.15f, Fixed, Carve},
    {"head",         0.f,   151.82f, 7.8f, 2.1f,  0.13f, 2.2f,  0.12f, Fixed, Carve},
};
// clang-format on

} // namespace quillon
