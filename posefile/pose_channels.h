// pose_channels.h - the one place that reads and sets the value of a channel that a pose file
// holds.
//
// The value is the stored one: what lies in the keys, before controllers and limits. Where controls
// drive a bone, its final value is the sum of its own share and theirs; a file that held finals
// would count the controls twice, or give another pose with its entries in another order. So the
// stored value is written, and reading sets it so that it is the file's number again: by setValue
// on a property without controllers, by setRawValue on one with controllers, since setValue works
// backwards through them. Both are refused by a lock.
// Degrees, centimetres or fractions, as the property has it.
#pragma once

#include "dztime.h"

class DzFloatProperty;

namespace quillon {

float storedValue(const DzFloatProperty* channel, DzTime time);
void setStoredValue(DzFloatProperty* channel, DzTime time, float value);

// What a reader does with a value that it found.
typedef void (*SetChannel)(DzFloatProperty* channel, DzTime time, float value);

// A channel's stored and final value at one time.
struct KeptValue {
    DzFloatProperty* channel;
    float stored;
    float value;
};

KeptValue keepValue(DzFloatProperty* channel, DzTime time);

// Makes the channel read again as it did: stores what was stored and, where other drivers' shares
// have changed since, makes up for the difference. Writes only what differs; nothing when locked.
void putBackValue(const KeptValue& kept, DzTime time);

} // namespace quillon
