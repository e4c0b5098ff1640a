// quiet_platform.h - the platform without a display, without a word.
#pragma once

namespace quillon {

// Selects the offscreen platform; call it before the application object exists. The platform's
// remarks about what it cannot do are dropped, every other message goes to stderr.
void useQuietPlatform();

} // namespace quillon
