// update_notice.h - asks the maker's site whether there is a newer version of the plug-in.
//
// The answer is a picture that announces it, named after this version. Its bytes are kept as
// received in "newversion_093.png" of the data folder, unpacked if the server packed them; only a
// PNG that decodes counts as news. An older file stays and counts as long as no later one takes its
// place. Addresses: QUILLON_UPDATE_URL and QUILLON_WEB_URL of the build, both with their last
// slash. Errors: whatever fails leaves no trace and shows no message. GUI thread only.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

namespace quillon {

const int kUpdateTimeoutMs = 5000; // for the whole request
const qint64 kLargestPicture = 16 * 1000 * 1000; // in pixels
// In bytes, as sent and unpacked; more than the largest picture needs.
const int kLargestReply = 64 * 1024 * 1024;

// What the server sent: the body as it came, and two headers, empty when they were not there.
struct UpdateReply {
    QByteArray body;
    QByteArray contentLength;
    QByteArray contentEncoding;
};

// The picture's bytes. Empty: the body is shorter than was announced, damaged, packed in a way that
// was not asked for, or longer than kLargestReply.
QByteArray pictureBytesOf(const UpdateReply& reply);

// Runs once, when the first pane is built, unless the user has switched update notices off.
// Returns when the reply is there or the time is up; the host goes on handling events meanwhile.
void checkForUpdate(int limitMs = kUpdateTimeoutMs);

// The picture of a newer version, null when none is known. Read from the data folder at the first
// call after a check or after the folder has changed.
const QImage& updatePicture();
bool isPictureSize(const QSize& size); // 1 to kLargestPicture pixels
QString updatePicturePath(); // empty without a data folder

QString updatePictureUrl(); // what is asked for
QString newVersionPageUrl(); // the page that tells of the newer version
QString pluginPageUrl();

} // namespace quillon
