// dzhostcalls.h - lets an embedding application watch and fail calls into this library.
// Not part of the interface that plug-ins see. The hook costs one load while it is not set.
//
//     if (DZ_HOST_CALL("findAction"))
//         return 0; // told to fail this once
#pragma once

#include "dzcore_export.h"

// name: the operation; caller: a return address inside the calling module. True: fail this call.
typedef bool (*DzHostCallHook)(const char* name, const void* caller);

extern DZCORE_EXPORT DzHostCallHook dzHostCallHook; // null: nobody watches

#if defined(__GNUC__)
#define DZ_HOST_CALL(name)                                                                         \
    (Q_UNLIKELY(dzHostCallHook != nullptr) && dzHostCallHook(name, __builtin_return_address(0)))
#else
#define DZ_HOST_CALL(name) (dzHostCallHook != 0 && dzHostCallHook(name, 0))
#endif

// For calls that have no way to fail: watched only.
#define DZ_HOST_SEEN(name) static_cast<void>(DZ_HOST_CALL(name))
