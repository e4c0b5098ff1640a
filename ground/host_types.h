// host_types.h - the host's value types, whole: DzVec3, DzMatrix3, DzQuat, DzRotationOrder, DzBox3,
// DzTime, DzTimeRange.
// Each has a header of its own in the stand-in. Which of them the real host has is not all known,
// and its class headers may only declare the types they take: where a type has no header of its
// name, the class that returns it by value brings it.
#pragma once

#include "dzrotationorder.h"

#if __has_include("dzvec3.h")
#include "dzvec3.h"
#endif
#if __has_include("dzmatrix3.h")
#include "dzmatrix3.h"
#endif
#if __has_include("dzquat.h")
#include "dzquat.h"
#endif
#if __has_include("dzbox3.h")
#include "dzbox3.h"
#endif
#if !__has_include("dzvec3.h")                                                                     \
    || !__has_include("dzmatrix3.h") || !__has_include("dzquat.h") || !__has_include("dzbox3.h")
#include "dznode.h"
#endif

#if __has_include("dztime.h")
#include "dztime.h"
#endif
#if __has_include("dztimerange.h")
#include "dztimerange.h"
#endif
#if !__has_include("dztime.h") || !__has_include("dztimerange.h")
#include "dzscene.h"
#endif
