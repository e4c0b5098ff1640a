#include "pane/artwork.h"

#include "ground/whole_file.h"

#include <cstddef>
#include <iterator>
#include <vector>

namespace quillon {

// The bytes of art/*.png, turned into source by the build.
#define QUILLON_EMBEDDED(symbol)                                                                   \
    extern const unsigned char symbol[];                                                           \
    extern const int symbol##Size
QUILLON_EMBEDDED(kPageMainPng);
QUILLON_EMBEDDED(kPagePickerPng);
QUILLON_EMBEDDED(kPageBrowsingPng);
QUILLON_EMBEDDED(kIconPng);
#undef QUILLON_EMBEDDED

struct EmbeddedPng {
    Picture picture;
    const unsigned char* bytes;
    const int* size;
};

static const EmbeddedPng kPngs[] = {
    {Picture::MainPage, kPageMainPng, &kPageMainPngSize},
    {Picture::PickerPage, kPagePickerPng, &kPagePickerPngSize},
    {Picture::BrowsingPage, kPageBrowsingPng, &kPageBrowsingPngSize},
    {Picture::Icon, kIconPng, &kIconPngSize},
};

namespace {

struct Decoded {
    QPixmap pixmap;
    FlatPicture flat; // without an image until it is asked for
};

} // namespace

static std::vector<Decoded> g_pictures; // empty at load: without an application no pixmap can be

QPixmap picture(Picture which)
{
    return g_pictures.empty() ? QPixmap() : g_pictures[std::size_t(which)].pixmap;
}

const FlatPicture* flatPicture(Picture which)
{
    if (picture(which).isNull())
        return nullptr;
    Decoded& decoded = g_pictures[std::size_t(which)];
    if (decoded.flat.image.isNull())
        decoded.flat = flatPicture(decoded.pixmap.toImage());
    return &decoded.flat;
}

void decodeArtwork()
{
    g_pictures.clear();
    g_pictures.resize(std::size(kPngs));
    for (const EmbeddedPng& png : kPngs)
        g_pictures[std::size_t(png.picture)].pixmap.loadFromData(png.bytes, uint(*png.size), "PNG");
}

void releasePageArtwork()
{
    for (const EmbeddedPng& png : kPngs) {
        if (png.picture != Picture::Icon)
            g_pictures[std::size_t(png.picture)] = Decoded();
    }
}

bool writeIconFile(const QString& path)
{
    return writePlainFile(
        path, QByteArray::fromRawData(reinterpret_cast<const char*>(kIconPng), kIconPngSize));
}

} // namespace quillon
