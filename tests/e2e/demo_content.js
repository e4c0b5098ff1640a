// Writes the library of preset_lib.js into the first content directory.
include("lib.js");
include("bytes_lib.js");
include("preset_lib.js");
writeLibrary();
quit(0);
