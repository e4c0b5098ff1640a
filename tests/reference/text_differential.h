// text_differential.h - what a scan tells from a file's bytes and path (words, figure code, hash)
// against the literal forms, on made-up texts: bytes of any kind, words and pieces of words in
// either case side by side, words that are nearly there, and one word at every place.
#pragma once

#include <cstdint>
#include <string>

namespace quillon {
namespace reference {

// One text of up to mostBytes. False with *why as "seed 7, 120 bytes: ..." when something differs.
// The same seed gives the same text everywhere. Adds 1 to *bodies (not null) if the text is taken
// for a pose of the whole body.
bool textsAgree(std::uint64_t seed, int mostBytes, long* bodies, std::string* why);

} // namespace reference
} // namespace quillon
