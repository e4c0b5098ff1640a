// picture_store.h - the pictures of a catalogue as files, kept from run to run.
// A picture's name comes from the pose file's path, size and time, and those of the picture that
// the preset brings along: when none of them has changed the file is there already.
// Owns: the folder "pictures" of the output folder.
#pragma once

#include <QSet>
#include <QString>

namespace quillon {

const int kPicturePx = 256; // along each side

// What is asked of a picture worker.
struct PictureJob {
    QString pose; // file
    QString own; // the picture that it brings along; empty: none
    bool male = false; // the figure to draw
    bool drawn = true; // when there is no own picture, or it cannot be read
    QString out; // file to write
};

// Below the output folder: "pictures/2f/90c1....jpg".
QString pictureName(const PictureJob&);

// Removes the pictures that are not among the names; and what a run that was ended has left.
void dropOtherPictures(const QString& output, const QSet<QString>& names);

} // namespace quillon
