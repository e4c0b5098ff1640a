// drawing_window.h - posebench's window on the offscreen platform with the plug-in's pane in it,
// the samples scanned and a category browsed: what the drawing of a press is timed in. Owns: the
// host and the window while it lives; a folder below the temporary one. One at a time.
#pragma once

#include <QImage>
#include <QString>

#include <memory>

namespace quillon {

class DrawingWindow {
public:
    DrawingWindow(); // ends the program with a word when something is missing
    ~DrawingWindow();

    void pressNext(); // with everything that is painted because of it
    QImage viewport() const; // as it is shown
    QImage pane() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quillon
