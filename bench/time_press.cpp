// time_press - a press of "next" in posebench's window: the plug-in as it is loaded, the samples
// scanned, a figure selected, the offscreen platform. Applying the pose, the viewport, the panels
// and the pane are in it.
//
// Prints rows as time_drawing does, but by the clock on the wall, as somebody waits for the
// picture: the median of the presses, n the viewport's pixels, and the CRC of the viewport and of
// the pane after the last one. A quiet machine is needed.
#include "bench/drawing_window.h"
#include "bench/picture_rows.h"
#include "host/driver/quiet_platform.h"

#include <QApplication>

using namespace quillon;

static const int kPresses = 60;

int main(int argc, char** argv)
{
    useQuietPlatform();
    QApplication app(argc, argv);
    DrawingWindow window;
    const Times times = timeAt(0.5, kPresses, [&] { window.pressNext(); });
    const QImage viewport = window.viewport();
    printHeader();
    print({"press_next", double(viewport.width()) * viewport.height(), times, Times(),
        crcOf(viewport, crcOf(window.pane())), 0, Clock::Wall});
    return 0;
}
