// pose_text.h - a pose file as text, and the entries of its animation list.
//
// Dialect: the url grammar of the host's presets, found by plain search and never parsed as JSON,
// so that a file in any layout, cut short or damaged, still gives the entries that can be
// recognised. An entry runs from "url" to the next "]"; line feeds inside it do not count. Text is
// Latin-1 and ends at the first zero byte. Numbers are in the C locale whatever the user's. Owns:
// the one read buffer, which lives as long as there is a pane, and the one pose text with its
// cursor. GUI thread only. Errors: nothing is reported; what is missing is empty, 0 or false.
#pragma once

#include <QString>

namespace quillon {

const int kReadBufferBytes = 524288;

void createReadBuffer();
void freeReadBuffer();
char* readBuffer(); // kReadBufferBytes bytes; null without a pane

// Reads a plain file through the host's gzip device, and as it is when that delivers nothing. The
// rest of a longer file is left out. terminate: the last byte read becomes a zero byte. Returns the
// number of bytes read; 0 or less: nothing. Memory is bounded by maxBytes.
int readPoseFileText(const QString& path, char* buffer, int maxBytes, bool terminate);

// Of bytes that were read so: a gzip file that gave none of what is in it, being damaged or not to
// be read just now. No preset begins like one.
bool isStillPacked(const char* bytes, int count);

// Bytes of a text that someone else keeps.
struct TextSpan {
    const char* begin;
    const char* end;
};

// ---- the pose text

// Takes count bytes, or fewer if there is a zero byte among them; they stay the caller's and have
// to stay as they are. The cursor goes to the start.
void setPoseText(const char* bytes, int count);
TextSpan poseText();

// Reads the file into the read buffer, terminated, and makes it the pose text. False when no byte
// was read.
bool loadPoseText(const QString& path);

// ---- entries

enum ChannelCode {
    NoChannel = 0,
    RotateX,
    RotateY,
    RotateZ,
    TranslateX,
    TranslateY,
    TranslateZ,
    ControlValue
};

// The next entry of the pose text; moves the cursor behind it. False or empty at the end.
bool nextEntry(TextSpan* entry);
QString nextEntry(); // its line feeds removed

// What the entry sets: a ChannelCode.
int channelOf(const TextSpan& entry);
int channelOf(const QString& entry);

// The bone or control of the entry; "root" for the figure node; empty when there is none. A span
// may hold line feeds, which are no part of the name; plainName() leaves them out.
TextSpan nodeNameOf(const TextSpan& entry);
QString nodeNameOf(const QString& entry);
QString plainName(const TextSpan& name);
bool isRootName(const TextSpan& name);

// The value of the first key; 0 when it is no finite number.
float valueOf(const TextSpan& entry);
float valueOf(const QString& entry);

// ---- numbers

// Blanks around it do not count, a sign may stand before it. 0, never -0, when the rest is no
// number of the C locale or none that a float can hold.
float numberOf(const TextSpan& text);

// The number between the second comma at or after from and the next "]"; 0 when one is missing.
float numberAfterTwoCommas(const char* from, const char* end);

} // namespace quillon
