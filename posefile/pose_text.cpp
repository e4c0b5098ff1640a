#include "posefile/pose_text.h"

#include "posefile/gzip_file.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace quillon {

static std::vector<char> g_buffer;

// The one pose text; the bytes are someone else's.
static struct PoseText {
    TextSpan all;
    const char* cursor; // where the next entry is looked for
} g_text = {{nullptr, nullptr}, nullptr};

void createReadBuffer()
{
    g_buffer.assign(kReadBufferBytes, 0);
}

void freeReadBuffer()
{
    setPoseText(nullptr, 0);
    std::vector<char>().swap(g_buffer);
}

char* readBuffer()
{
    return g_buffer.empty() ? nullptr : g_buffer.data();
}

// ---- reading a file

int readPoseFileText(const QString& path, char* buffer, int maxBytes, bool terminate)
{
    const int count = readUnpackedOrAsIs(path, buffer, maxBytes);
    if (terminate && count > 0)
        buffer[count - 1] = 0; // replaces a byte, which in a preset is the last line end or brace
    return count;
}

bool isStillPacked(const char* bytes, int count)
{
    return count >= 2 && bytes[0] == '\x1f' && bytes[1] == '\x8b';
}

void setPoseText(const char* bytes, int count)
{
    const void* zero = count > 0 ? std::memchr(bytes, 0, size_t(count)) : nullptr;
    g_text.all.begin = bytes;
    g_text.all.end = zero ? static_cast<const char*>(zero) : bytes + count;
    g_text.cursor = bytes;
}

TextSpan poseText()
{
    return g_text.all;
}

bool loadPoseText(const QString& path)
{
    char* buffer = readBuffer();
    const int count = buffer ? readPoseFileText(path, buffer, kReadBufferBytes, true) : 0;
    setPoseText(buffer, count);
    return count > 0;
}

// ---- searching; "not found" is the end

static const char* findChar(const char* from, const char* end, char wanted)
{
    const void* at = from < end ? std::memchr(from, wanted, size_t(end - from)) : nullptr;
    return at ? static_cast<const char*>(at) : end;
}

static const char* skipLineFeeds(const char* at, const char* end)
{
    while (at < end && *at == '\n')
        ++at;
    return at;
}

static const char* matchBroken(const char* at, const char* end, const char* word)
{
    for (; *word; ++word, ++at) {
        at = skipLineFeeds(at, end);
        if (at == end || *at != *word)
            return nullptr;
    }
    return at;
}

// Behind the word if the text at this place reads so without its line feeds; else null.
template <int size>
static const char* matchWord(const char* at, const char* end, const char (&word)[size])
{
    static const int kLength = size - 1;
    if (end - at >= kLength && std::memcmp(at, word, kLength) == 0)
        return at + kLength;
    return matchBroken(at, end, word);
}

// Behind the word's first occurrence; null when there is none.
template <int size> static const char* behindWord(const TextSpan& in, const char (&word)[size])
{
    for (const char* at = in.begin; (at = findChar(at, in.end, *word)) != in.end; ++at) {
        if (const char* behind = matchWord(at, in.end, word))
            return behind;
    }
    return nullptr;
}

// ---- entries

static const char kUrlKey[] = "\"url\"";
static const int kUrlKeyLength = 5;

static const char* findUrlKey(const char* from, const char* end)
{
    for (const char* at = from; (at = findChar(at, end, '"')) != end; ++at) {
        if (end - at >= kUrlKeyLength && std::memcmp(at, kUrlKey, kUrlKeyLength) == 0)
            return at;
    }
    return end;
}

bool nextEntry(TextSpan* entry)
{
    const char* url = findUrlKey(g_text.cursor, g_text.all.end);
    const char* bracket = findChar(url, g_text.all.end, ']');
    if (bracket == g_text.all.end)
        return false;
    g_text.cursor = bracket + 1;
    entry->begin = url;
    entry->end = g_text.cursor;
    return true;
}

static const int kNoAxis = 3;

// The axis at this "/" as 0, 1, 2, or kNoAxis.
static int axisAt(const char* at, const char* end)
{
    const char letter = *std::min(skipLineFeeds(at + 1, end), end - 1);
    switch (letter) {
    case 'x':
        return matchWord(at, end, "/x/value") ? 0 : kNoAxis;
    case 'y':
        return matchWord(at, end, "/y/value") ? 1 : kNoAxis;
    case 'z':
        return matchWord(at, end, "/z/value") ? 2 : kNoAxis;
    default:
        return kNoAxis;
    }
}

// Of x, y and z the first one that stands anywhere in the entry.
static int axisOf(const TextSpan& entry)
{
    int axis = kNoAxis;
    for (const char* at = entry.begin; (at = findChar(at, entry.end, '/')) != entry.end; ++at)
        axis = std::min(axis, axisAt(at, entry.end));
    return axis;
}

int channelOf(const TextSpan& entry)
{
    bool rotation = false, translation = false;
    for (const char* at = entry.begin; (at = findChar(at, entry.end, '?')) != entry.end; ++at) {
        if (matchWord(at, entry.end, "?value/value"))
            return ControlValue;
        rotation = rotation || matchWord(at, entry.end, "?rotation/");
        translation = translation || matchWord(at, entry.end, "?translation/");
    }
    if (!rotation && !translation)
        return NoChannel;
    const int axis = axisOf(entry);
    return axis == kNoAxis ? NoChannel : (rotation ? RotateX : TranslateX) + axis;
}

static const char kRootName[] = "root";

TextSpan nodeNameOf(const TextSpan& entry)
{
    const TextSpan none = {entry.end, entry.end};
    const char* at = behindWord(entry, "selection");
    if (!at)
        return none;
    at = skipLineFeeds(at, entry.end);
    at = at < entry.end ? skipLineFeeds(at + 1, entry.end) : at; // "/", "#" or ":"
    if (at < entry.end && *at == '?')
        return TextSpan {kRootName, kRootName + sizeof kRootName - 1};
    const char* colon = findChar(at, entry.end, ':');
    return colon == entry.end ? none : TextSpan {at, colon};
}

bool isRootName(const TextSpan& name)
{
    const char* behind = matchWord(name.begin, name.end, kRootName);
    return behind && skipLineFeeds(behind, name.end) == name.end;
}

static std::string withoutLineFeeds(const TextSpan& text)
{
    std::string joined(text.begin, text.end);
    joined.erase(std::remove(joined.begin(), joined.end(), '\n'), joined.end());
    return joined;
}

QString plainName(const TextSpan& name)
{
    const std::string joined = withoutLineFeeds(name);
    return QString::fromLatin1(joined.data(), int(joined.size()));
}

float valueOf(const TextSpan& entry)
{
    const char* first = findChar(entry.begin, entry.end, ',');
    const char* second = first == entry.end ? first : findChar(first + 1, entry.end, ',');
    const char* bracket = findChar(second, entry.end, ']');
    if (bracket == entry.end)
        return 0;
    const TextSpan value = {second + 1, bracket};
    if (findChar(value.begin, value.end, '\n') == value.end)
        return numberOf(value);
    const std::string joined = withoutLineFeeds(value);
    return numberOf(TextSpan {joined.data(), joined.data() + joined.size()});
}

// ---- numbers

static bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

float numberOf(const TextSpan& text)
{
    const char *from = text.begin, *to = text.end;
    while (from < to && isBlank(*from))
        ++from;
    while (from < to && isBlank(to[-1]))
        --to;
    if (to - from > 1 && from[0] == '+' && from[1] != '-')
        ++from; // from_chars knows the minus only
    float value = 0;
    const std::from_chars_result read = std::from_chars(from, to, value);
    const bool isNumber = read.ec == std::errc() && read.ptr == to && std::isfinite(value);
    return isNumber && value != 0 ? value : 0; // a zero loses its sign
}

float numberAfterTwoCommas(const char* from, const char* end)
{
    const char* first = findChar(from, end, ',');
    const char* second = first == end ? end : findChar(first + 1, end, ',');
    const char* bracket = findChar(second, end, ']');
    return bracket == end ? 0 : numberOf(TextSpan {second + 1, bracket});
}

// ---- the same on strings

// Characters beyond Latin-1 become one that no name and no number has.
static std::string latin1Of(const QString& text)
{
    static const ushort kSubstitute = 0x1a;
    std::string bytes(size_t(text.size()), 0);
    for (int i = 0; i < text.size(); ++i) {
        const ushort c = text.at(i).unicode();
        bytes[size_t(i)] = char(c <= 0xff ? c : kSubstitute);
    }
    return bytes;
}

static TextSpan spanOf(const std::string& bytes)
{
    return TextSpan {bytes.data(), bytes.data() + bytes.size()};
}

QString nextEntry()
{
    TextSpan entry;
    return nextEntry(&entry) ? plainName(entry) : QString();
}

int channelOf(const QString& entry)
{
    return channelOf(spanOf(latin1Of(entry)));
}

QString nodeNameOf(const QString& entry)
{
    const std::string bytes = latin1Of(entry);
    return plainName(nodeNameOf(spanOf(bytes)));
}

float valueOf(const QString& entry)
{
    return valueOf(spanOf(latin1Of(entry)));
}

} // namespace quillon
