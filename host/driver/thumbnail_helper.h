// thumbnail_helper.h - the process that makes pictures of pose presets for the content library:
//     posebench --thumbnails
// It reads lines from the standard input, each a file, a tabulator and the PNG to write; the file
// is a pose preset, or a picture to make smaller. It answers each with the PNG's name, written or
// not, and ends when the input does. No window, no plug-in, no home.
#pragma once

namespace quillon {

int runThumbnailHelper(); // needs an application; the exit code

} // namespace quillon
