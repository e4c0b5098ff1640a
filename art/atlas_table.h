// atlas_table.h - where each piece of artwork lies in the three page images.
// The images are atlases: three image pixels per canvas unit (the pane is 512 x 1024 units), pieces
// apart by empty gutters, transparent outside their rounded plates. Tables are written by
// make_art.py together with the pictures. Owns: the table and the embedded PNGs. Read only; any
// thread.
#pragma once

namespace quillon {

enum class AtlasImage {
    Main,
    Picker,
    Browsing,
};

constexpr int kAtlasImageCount = 3;
constexpr int kAtlasScale = 3; // image pixels per canvas unit

// Pieces that are no buttons stand in the table under numbers of their own.
constexpr int kArtNotice = 500; // frame of the new-version notice, over the header
constexpr int kArtBody = 501; // the body behind the ten area squares
constexpr int kArtBodyArea = 502; // one area square

struct AtlasCell {
    AtlasImage image;
    int button; // number of a button, or kArt... above
    int state; // filters, locks, area squares: 0 off, 1 on. 202: 0 to the main page, 1 to the
               // picker. 213: the rank. 220: 0 folder, 1 delete. 401: 0 tall, 1 low (browsing).
               // Others: 0
    int x, y, w, h; // image pixels
};

struct AtlasSize {
    int w, h;
};

struct ArtPlace {
    int x, y, w, h;
};

// Text places carry nothing lighter than kArtColourPanel, on which mid grey text reads well.
#include "art/atlas_constants.inc"

extern const AtlasCell kAtlasCells[]; // sorted by button, then state
extern const int kAtlasCellCount;

// Null when there is no such piece.
const AtlasCell* atlasCell(int button, int state = 0);

// The PNG files, in the order of AtlasImage, and the plug-in's icon (64 x 64).
extern const unsigned char kPageMainPng[];
extern const int kPageMainPngSize;
extern const unsigned char kPagePickerPng[];
extern const int kPagePickerPngSize;
extern const unsigned char kPageBrowsingPng[];
extern const int kPageBrowsingPngSize;
extern const unsigned char kIconPng[];
extern const int kIconPngSize;

} // namespace quillon
