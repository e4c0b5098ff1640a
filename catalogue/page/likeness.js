// likeness.js - how alike two poses are, from their signatures alone.
//
// A signature is ten unit quaternions x, y, z, w: hip, torso, left and right shin, thigh, arm and
// forearm. Two rotations are compared by what they make of the axes Y and Z: the score is 1 less a
// quarter of the larger of the two distances, so it lies between 1/2 and 1 and rejects nothing. The
// hip, which also tells where the figure faces, is compared at the best of 360 turns about the
// world's Y. The likeness of two poses is the mean over the areas that count.
"use strict";

const kAreas = ["Hip", "Torso", "Left shin", "Right shin", "Left thigh", "Right thigh", "Left arm",
  "Right arm", "Left forearm", "Right forearm"];
const kAreaCount = kAreas.length;
const kTolerance = 4;
const kTurns = 360;
const kPoseImages = kAreaCount * 6; // x y z of the image of Y, then of Z, of each area

const turnCos = new Float64Array(kTurns), turnSin = new Float64Array(kTurns);
for (let i = 0; i < kTurns; ++i) {
  turnCos[i] = Math.cos(i * Math.PI / 180);
  turnSin[i] = Math.sin(i * Math.PI / 180);
}

// The images of the axes under each rotation. The host's quaternions turn the other way round than
// the usual ones. A quaternion of no length gives NaN: the pose has no signature.
function imagesOf(signatures) {
  const count = signatures.length / 4;
  const images = new Float64Array(count * 6);
  for (let i = 0; i < count; ++i) {
    const length = Math.hypot(
      signatures[4 * i], signatures[4 * i + 1], signatures[4 * i + 2], signatures[4 * i + 3]);
    const x = -signatures[4 * i] / length, y = -signatures[4 * i + 1] / length;
    const z = -signatures[4 * i + 2] / length, w = signatures[4 * i + 3] / length;
    images[6 * i] = 2 * (x * y - w * z);
    images[6 * i + 1] = 1 - 2 * (x * x + z * z);
    images[6 * i + 2] = 2 * (y * z + w * x);
    images[6 * i + 3] = 2 * (x * z + w * y);
    images[6 * i + 4] = 2 * (y * z - w * x);
    images[6 * i + 5] = 1 - 2 * (x * x + y * y);
  }
  return images;
}

function scoreOfSquare(square) {
  return Math.max(0, 1 - Math.sqrt(Math.max(0, square)) / kTolerance);
}

function squareDistance(a, i, b, j) {
  const x = a[i] - b[j], y = a[i + 1] - b[j + 1], z = a[i + 2] - b[j + 2];
  return x * x + y * y + z * z;
}

function areaScore(a, i, b, j) {
  return scoreOfSquare(Math.max(squareDistance(a, i, b, j), squareDistance(a, i + 3, b, j + 3)));
}

// The square of the distance of two unit vectors, one of them turned by t about Y, is
// still - 2 (cos t * along + sin t * across).
function hipScore(a, i, b, j) {
  const yStill = 2 - 2 * a[i + 1] * b[j + 1], zStill = 2 - 2 * a[i + 4] * b[j + 4];
  const yAlong = 2 * (a[i] * b[j] + a[i + 2] * b[j + 2]);
  const yAcross = 2 * (a[i] * b[j + 2] - a[i + 2] * b[j]);
  const zAlong = 2 * (a[i + 3] * b[j + 3] + a[i + 5] * b[j + 5]);
  const zAcross = 2 * (a[i + 3] * b[j + 5] - a[i + 5] * b[j + 3]);
  let best = Infinity;
  for (let turn = 0; turn < kTurns; ++turn) {
    const c = turnCos[turn], s = turnSin[turn];
    const y = yStill - c * yAlong - s * yAcross, z = zStill - c * zAlong - s * zAcross;
    const larger = y > z ? y : z;
    if (larger < best)
      best = larger;
  }
  return scoreOfSquare(best);
}

// How like each pose of images is to the chosen one, by the areas whose flags are on; 1 for all when
// none is on, -1 for a pose without a signature.
function likenessTo(images, chosen, areaFlags) {
  const count = images.length / kPoseImages, from = chosen * kPoseImages;
  const areas = [...Array(kAreaCount).keys()].filter(area => areaFlags[area]);
  const likeness = new Float64Array(count).fill(areas.length ? 0 : 1);
  for (const area of areas) {
    const score = area === 0 ? hipScore : areaScore;
    for (let pose = 0; pose < count; ++pose)
      likeness[pose] += score(images, pose * kPoseImages + area * 6, images, from + area * 6);
  }
  for (let pose = 0; pose < count; ++pose) {
    const known = images[pose * kPoseImages] === images[pose * kPoseImages];
    likeness[pose] = known ? likeness[pose] / (areas.length || 1) : -1;
  }
  return likeness;
}
