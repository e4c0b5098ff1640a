// figure_renderer_reference.h - the picture of the scene in its literal form: every pixel of the
// backdrop, every triangle and every sample by itself. Slow and plain; the bytes of
// host/body/figure_renderer's pictures are held against it.
#pragma once

#include "host/body/figure_renderer.h"

namespace quillon {
namespace reference {

QImage renderSceneImage(const QSize& size, const Camera& camera,
    const RenderOptions& options = RenderOptions(), PickMap* pick = nullptr);

} // namespace reference
} // namespace quillon
