// image_differential.h - the fast search of the yaw table against the plain loop, on made-up hips:
// random ones, such as are near one of the table, such as have a number moved to the very edge of
// what is near, and such as hold numbers that are none. Without Qt.
#pragma once

#include <cstdint>
#include <string>

namespace quillon {
namespace reference {

// False with *why when a verdict differs. The same seed gives the same table and hips everywhere.
bool imagesAgree(std::uint64_t seed, int hips, std::string* why);
// Of the fast verdicts.
std::uint64_t checksumOfImages(std::uint64_t seed, int hips);

} // namespace reference
} // namespace quillon
