#include "art/atlas_table.h"

#include <algorithm>
#include <iterator>

namespace quillon {

constexpr AtlasCell kAtlasCells[] = {
// clang-format off
#include "art/atlas_cells.inc"
    // clang-format on
};

const int kAtlasCellCount = int(std::size(kAtlasCells));

static constexpr bool comesBefore(const AtlasCell& a, const AtlasCell& b)
{
    return a.button != b.button ? a.button < b.button : a.state < b.state;
}

static constexpr bool isSorted()
{
    for (size_t i = 1; i < std::size(kAtlasCells); ++i)
        if (!comesBefore(kAtlasCells[i - 1], kAtlasCells[i]))
            return false;
    return true;
}

static constexpr bool liesInItsImage(const AtlasCell& c)
{
    const AtlasSize size = kAtlasSizes[int(c.image)];
    return c.x > 0 && c.y > 0 && c.w > 0 && c.h > 0 && c.x + c.w < size.w && c.y + c.h < size.h;
}

static constexpr bool isWholeUnits(const AtlasCell& c)
{
    return c.w % kAtlasScale == 0 && c.h % kAtlasScale == 0;
}

static constexpr bool overlap(const AtlasCell& a, const AtlasCell& b)
{
    return a.image == b.image && a.x < b.x + b.w && b.x < a.x + a.w && a.y < b.y + b.h
        && b.y < a.y + a.h;
}

static constexpr bool areCellsSound()
{
    for (size_t i = 0; i < std::size(kAtlasCells); ++i) {
        if (!liesInItsImage(kAtlasCells[i]) || !isWholeUnits(kAtlasCells[i]))
            return false;
        for (size_t k = 0; k < i; ++k)
            if (overlap(kAtlasCells[i], kAtlasCells[k]))
                return false;
    }
    return true;
}

static_assert(std::size(kAtlasSizes) == kAtlasImageCount, "one size per image");
static_assert(isSorted(), "lookup is a binary search; each button and state stands there once");
static_assert(areCellsSound(), "cells lie in their images, apart, in whole canvas units");

const AtlasCell* atlasCell(int button, int state)
{
    const AtlasCell wanted = {AtlasImage::Main, button, state, 0, 0, 0, 0};
    const AtlasCell* end = std::end(kAtlasCells);
    const AtlasCell* found = std::lower_bound(std::begin(kAtlasCells), end, wanted, comesBefore);
    return found != end && !comesBefore(wanted, *found) ? found : nullptr;
}

} // namespace quillon
