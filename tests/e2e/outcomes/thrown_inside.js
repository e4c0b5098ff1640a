include("thrown.js");
