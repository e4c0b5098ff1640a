// pose_channels.h - what a pose file holds of a channel.
//
// The value is the stored one (channel_snapshot.h): what lies in the keys, before controllers and
// limits. Where controls drive a bone, its final value is the sum of its own share and theirs; a
// file that held finals would count the controls twice, or give another pose with its entries in
// another order. So the stored value is written, and reading sets it so that it is the file's
// number again. Degrees, centimetres or fractions, as the property has it.
#pragma once

#include "figure/channel_snapshot.h"

namespace quillon {

// What a reader does with a value that it found.
typedef void (*SetChannel)(DzFloatProperty* channel, DzTime time, float value);

} // namespace quillon
