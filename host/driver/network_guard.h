// network_guard.h - decides where this process's HTTP goes.
#pragma once

namespace quillon {

struct CommandLine;

// With a proxy given: there. Headless without one: to a loopback port that refuses every
// connection at once, so that nothing leaves the machine. Otherwise as the system says.
void guardNetwork(const CommandLine&);

} // namespace quillon
