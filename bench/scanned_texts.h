// scanned_texts.h - texts as a scan meets them, of any length and the same at every run.
#pragma once

#include <QByteArray>

class DzFigure;

namespace quillon {

// A whole-body preset in the host's layout: bones from the leaves to the hip with ten entries each,
// then the controls. Repeated or cut to the length.
QByteArray presetText(const DzFigure* figure, int bytes);

// Letters at random, of those that the words of a whole body are made of, in both cases.
QByteArray letterText(int bytes);

// One word after the other, each with a letter that is wrong.
QByteArray nearMissText(int bytes);

// The same with the words of a whole body as its last bytes.
QByteArray endingAsWholeBody(QByteArray text);

} // namespace quillon
