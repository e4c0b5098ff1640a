// odd_presets.h - preset files as other writers leave them, made here: one pose in many layouts,
// texts that do not come to what their writer meant, files cut off, parts of a body, no poses.
#pragma once

#include "pose_fixture.h"

#include <QBuffer>

#include <initializer_list>

namespace quillon {

// ---- layouts that read as the host's own

// The host's layout without its indents.
inline QByteArray flatLines(const QByteArray& host)
{
    return QByteArray(host).replace('\t', "");
}

// Each line moved in by as many units as brackets are open before it.
inline QByteArray indented(const QByteArray& lines, const char* unit)
{
    QByteArray out;
    int depth = 0;
    for (const QByteArray& line : lines.split('\n')) {
        const int closed = line.startsWith(']') || line.startsWith('}') ? 1 : 0;
        if (!line.isEmpty())
            out += QByteArray(unit).repeated(depth - closed) + line;
        out += '\n';
        depth += line.count('[') + line.count('{') - line.count(']') - line.count('}');
    }
    out.chop(1);
    return out;
}

inline QByteArray hostLayout(const QByteArray& host)
{
    return host;
}

inline QByteArray withReturns(const QByteArray& host)
{
    return QByteArray(host).replace('\n', "\r\n");
}

inline QByteArray returnsAlone(const QByteArray& host)
{
    return QByteArray(host).replace('\n', '\r');
}

inline QByteArray inOneLine(const QByteArray& host)
{
    return flatLines(host).replace(" : ", ": ").replace('\n', " ");
}

inline QByteArray withoutBlanks(const QByteArray& host)
{
    return flatLines(host).replace('\n', "").replace(' ', "");
}

inline QByteArray keyPerLine(const QByteArray& host)
{
    QByteArray lines = flatLines(host);
    lines.replace("[ [ ", "[\n[ ").replace(" ], [ ", " ],\n[ ").replace(" ] ]", " ]\n]");
    return indented(lines, "    ");
}

inline QByteArray numberPerLine(const QByteArray& host)
{
    QByteArray lines = flatLines(host).replace(" : ", ": ");
    return indented(lines.replace("[ ", "[\n").replace(" ]", "\n]").replace(", ", ",\n"), "  ");
}

inline QByteArray withMark(const QByteArray& host) // of UTF-8
{
    return "\xef\xbb\xbf" + host;
}

inline QByteArray markedKeyPerLine(const QByteArray& host)
{
    return withMark(keyPerLine(host));
}

inline QByteArray withTrailingCommas(const QByteArray& host)
{
    return QByteArray(host).replace("}\n\t\t]", "},\n\t\t]").replace(" ] ]", " ], ]");
}

inline QByteArray withEmptyLines(const QByteArray& host)
{
    return QByteArray(host).replace('\n', " \n\n");
}

struct OddLayout {
    const char* name;
    QByteArray (*bytes)(const QByteArray& host);
    bool packed;
    const char* why;
};

static const OddLayout kOddLayouts[] = {
    {"host", hostLayout, false, "the host's own layout"},
    {"host packed", hostLayout, true, "the same, compressed"},
    {"returns", withReturns, false, "carriage returns are blanks around a number"},
    {"returns alone", returnsAlone, true, "nothing needs a line"},
    {"one line", inOneLine, false, "entries need no line of their own"},
    {"no blanks", withoutBlanks, false, "nor blanks"},
    {"key per line", keyPerLine, true, "line feeds inside an entry do not count"},
    {"number per line", numberPerLine, false, "nor around a number"},
    {"mark", markedKeyPerLine, false, "a byte-order mark is text like any other"},
    {"mark packed", withMark, true, "also in compressed text"},
    {"trailing commas", withTrailingCommas, false, "it is not parsed as JSON"},
    {"empty lines", withEmptyLines, false, "blank lines and blanks at the ends of lines"},
};
static const int kOddLayoutCount = int(sizeof kOddLayouts / sizeof *kOddLayouts);

// ---- one small pose

// Its seven entries: the hip's translation is never applied, the last control is in no table.
inline QList<QByteArray> smallPose()
{
    return QList<QByteArray>() << valueEntry(":?translation/y", "3.25")
                               << valueEntry("/rShin:?rotation/x", "41.5")
                               << entryText(
                                      "/rShldrBend:?rotation/z", "[ [ 0, 38.25 ], [ 1, 40 ] ]")
                               << valueEntry("/rHand:?rotation/y", "-2.5e-07")
                               << valueEntry("/hip:?translation/y", "96")
                               << valueEntry("#pCTRLArmsUpDwnRight:?value", "0.25")
                               << valueEntry("#Chin%20Up-Down:?value", "1");
}

#define QUILLON_SMALL_POSE_START                                                                   \
    "Genesis8Female/YTranslate=3.25 rShin/XRotate=41.5 rShldrBend/ZRotate=38.25 "                  \
    "rHand/YRotate=-2.5e-07"
#define QUILLON_SMALL_POSE QUILLON_SMALL_POSE_START " Genesis8Female/pCTRLArmsUpDwnRight=0.25"

// ---- files

// What a file comes to: whether it is read, how many entries are found, what is set in which order.
struct OddPreset {
    const char* name;
    QByteArray bytes;
    bool read;
    int entries;
    const char* calls;
    const char* why;
};

// Gzip of one stored block; whatever is cut off, the rest unpacks to as many bytes less.
inline QByteArray storedGzip(const QByteArray& text)
{
    const auto byte = [](int value) { return char(value & 255); };
    const int size = text.size(); // below 64 KB
    QByteArray out("\x1f\x8b\x08\0\0\0\0\0\0\xff\x01", 11);
    for (int each : {size, size >> 8, ~size, ~size >> 8})
        out += byte(each);
    return out + text;
}

inline QByteArray utf16(const QByteArray& text)
{
    QByteArray out("\xff\xfe", 2);
    for (const char each : text)
        (out += each) += '\0';
    return out;
}

inline QByteArray upTo(const QByteArray& text, const char* end)
{
    return text.left(text.indexOf(end) + int(std::strlen(end)));
}

// Every entry's keys before its url.
inline QByteArray keysFirst(const QList<QByteArray>& entries)
{
    QList<QByteArray> turned;
    for (const QByteArray& each : entries) {
        QList<QByteArray> lines = each.split('\n');
        const QByteArray url = lines.at(1).left(lines.at(1).size() - 1);
        turned << lines.at(0) + '\n' + lines.at(2) + ",\n" + url + '\n' + lines.at(3);
    }
    return presetText(turned);
}

// Blocks of 1,024 bytes with a url each that selects nothing; behind the buffer's end one that
// does.
inline QByteArray largeScene()
{
    QByteArray text;
    for (int i = 0; i < 600; ++i) {
        const QByteArray block = i == 550
            ? valueEntry("/rShin:?rotation/x", "41.5")
            : QByteArray("{ \"url\" : \"#rShin-1:?rotation/x/value\", \"keys\" : [ [ 0, 5 ] ] },");
        text += block.leftJustified(1023, ' ') + '\n';
    }
    return text;
}

inline QByteArray manyKeys()
{
    QByteArray keys = "[ [ 0, 0 ]";
    for (int i = 1; i < 53; ++i)
        keys += ", [ " + QByteArray::number(i / 30.0, 'g', 7) + ", " + QByteArray::number(i) + " ]";
    return presetText(QList<QByteArray>() << entryText("/rShin:?rotation/x", keys + " ]"));
}

inline QByteArray presetWith(std::initializer_list<QByteArray> entries)
{
    QList<QByteArray> all;
    for (const QByteArray& entry : entries)
        all << entry;
    return presetText(all);
}

// An entry with a url that need not select anything, as the host writes it.
inline QByteArray foreignEntry(const char* url, const char* keys)
{
    return entryText("", keys).replace("name://@selection/value", url);
}

inline QByteArray packedBytes(const QByteArray& bytes)
{
    QBuffer out;
    DzGzIO gzip(&out);
    if (!gzip.open(QIODevice::WriteOnly) || gzip.write(bytes) != bytes.size())
        qFatal("cannot pack");
    gzip.close();
    return out.data();
}

inline QByteArray inLayout(const OddLayout& layout, const QByteArray& host)
{
    const QByteArray bytes = layout.bytes(host);
    return layout.packed ? packedBytes(bytes) : bytes;
}

typedef QList<OddPreset> OddPresets;

inline void addLayouts(OddPresets* out)
{
    for (const OddLayout& each : kOddLayouts) {
        const QByteArray bytes = inLayout(each, presetText(smallPose()));
        out->append({each.name, bytes, true, 7, QUILLON_SMALL_POSE, each.why});
    }
}

inline void addOtherTexts(OddPresets* out)
{
    const QList<QByteArray> small = smallPose();
    out->append({"keys before url", keysFirst(small), true, 7,
        "Genesis8Female/YTranslate=41.5 rShin/XRotate=38.25 rShldrBend/ZRotate=-2.5e-07 "
        "rHand/YRotate=96 Genesis8Female/pCTRLArmsUpDwnRight=1",
        "each url takes the next entry's value"});
    out->append({"16 bits a letter", utf16(presetText(small)), true, 0, "", "no word is whole"});
    const QByteArray zero = presetText(small).replace("0.25", QByteArray("0.2\0 5", 6));
    out->append({"a zero", zero, true, 5, QUILLON_SMALL_POSE_START,
        "the text ends at its first zero byte"});
    const QByteArray broken = presetText(small).replace("?rotation/", "?rota\n\ntion/");
    out->append({"broken words", broken, true, 7, QUILLON_SMALL_POSE,
        "line feeds inside a word do not count"});
    const QByteArray interpolation = entryText("/rShin:?rotation/x", "[ [ 0, 41, [ \"TCB\" ] ] ]");
    out->append({"interpolation",
        presetWith({interpolation, valueEntry("/rHand:?rotation/y", "7")}), true, 2,
        "rShin/XRotate=0 rHand/YRotate=7", "value and interpolation together are no number: 0"});
    const QByteArray vector
        = foreignEntry("name://@selection/rFoot:?translation", "[ [ 0, [ 1, 2, 3 ] ] ]");
    out->append({"vector", presetText(QList<QByteArray>(small) << vector), true, 8,
        QUILLON_SMALL_POSE, "a translation without axis is lost"});
    out->append({"many keys", manyKeys(), true, 1, "rShin/XRotate=0", "the first key counts"});
    const QByteArray picture = foreignEntry(
        "name://@selection#materials/Legs:?diffuse/image_file", "[ [ 0, \"/Textures/a.png\" ] ]");
    out->append({"other channels",
        presetWith({valueEntry("/rHand:?rotation/y", "7"), picture,
            valueEntry("/rHand:?scale/general", "1"), valueEntry("/rHand:?scale/x", "2"),
            foreignEntry("name://@selection/rShin:?enabled", "[ [ 0, true ] ]"),
            foreignEntry("rShin#Bend:?value", "[ [ 0, 1 ] ]"),
            valueEntry("/rHand:?rotation/y", "8")}),
        true, 7, "rHand/YRotate=7 rHand/YRotate=8", "of a channel's entries the last one wins"});
}

inline void addCutFiles(OddPresets* out)
{
    const QByteArray whole = presetText(smallPose());
    out->append({"cut behind a url", upTo(whole, "Up-Down:?value/value\""), true, 6,
        QUILLON_SMALL_POSE, "the last url has no bracket behind it"});
    out->append({"cut in a number", upTo(whole, "[ [ 0, 0.2"), true, 5, QUILLON_SMALL_POSE_START,
        "half a number is none"});
    out->append({"cut in the head", whole.left(20), true, 0, "", "no entry"});
    out->append({"cut packed", storedGzip(upTo(whole, "38.25 ], [")), true, 3,
        "Genesis8Female/YTranslate=3.25 rShin/XRotate=41.5 rShldrBend/ZRotate=38.25",
        "what could be unpacked"});
    out->append({"empty", QByteArray(), false, 0, "", "no byte was read"});
    out->append({"one byte", "{", true, 0, "", "which the terminator replaces"});
    out->append({"packed nothing", storedGzip(QByteArray()).left(10), true, 0, "",
        "the packed bytes themselves are read"});
}

inline void addPartsOfBodies(OddPresets* out)
{
    const QByteArray turned = valueEntry("/rShin:?rotation/x", "41.5");
    out->append({"a fist",
        presetWith({valueEntry("/rIndex1:?rotation/z", "70"),
            valueEntry("/rIndex2:?rotation/z", "80"), valueEntry("/rThumb1:?rotation/y", "-12")}),
        true, 3, "rIndex1/ZRotate=70 rIndex2/ZRotate=80 rThumb1/YRotate=-12", "a hand alone"});
    out->append({"a smile",
        presetWith({valueEntry("#eCTRLMouthSmile:?value", "0.5"),
            valueEntry("/lowerJaw:?rotation/x", "4")}),
        true, 2, "Genesis8Female/eCTRLMouthSmile=0.5 lowerJaw/XRotate=4", "a face alone"});
    out->append({"an older figure",
        presetWith({valueEntry("/rThigh:?rotation/x", "9"), valueEntry("/rShldr:?rotation/z", "9"),
            valueEntry("/abdomen2:?rotation/x", "9"), turned}),
        true, 4, "rShin/XRotate=41.5", "bones of other names are lost"});
    out->append({"no animations", "{ \"asset_info\" : { \"type\" : \"preset_pose\" } }\n", true, 0,
        "", "no entry"});
}

inline void addNoPoses(OddPresets* out)
{
    const QByteArray turned = valueEntry("/rShin:?rotation/x", "41.5");
    const QByteArray woman
        = foreignEntry("Genesis8Female:/data/f.dsf#rShin:?rotation/x/value", "[ [ 0, 9 ] ]");
    const QByteArray man
        = foreignEntry("Genesis8Male:/data/m.dsf#rShin:?rotation/x/value", "[ [ 0, 9 ] ]");
    out->append(
        {"two figures", presetWith({woman, man}).replace("preset_pose", "preset_hierarchical_pose"),
            true, 2, "", "no url selects"});
    const QByteArray colour = foreignEntry(
        "name://@selection#materials/Legs:?diffuse/value", "[ [ 0, [ 1, 0.5, 0.25 ] ] ]");
    out->append({"a material", presetWith({colour}).replace("preset_pose", "preset_material"), true,
        1, "", "no channel of a pose"});
    out->append({"a scene with the word",
        presetWith({turned}).replace(
            "\"preset_pose\"", "\"scene\", \"id\" : \"/my%20preset_pose.duf\""),
        true, 1, "rShin/XRotate=41.5", "the type is not looked at"});
    const QByteArray lateType = "\"id\" : \"/" + QByteArray(1100, 'y') + "\", \"type\"";
    out->append({"a late type", presetText(smallPose()).replace("\"type\"", lateType), true, 7,
        QUILLON_SMALL_POSE, "nor where it stands"});
    out->append(
        {"a large scene", largeScene(), true, 512, "", "the buffer is full before the end"});
    out->append({"a page", "<html>404: \"url\" not found</html>\n", true, 0, "",
        "a url without a bracket"});
    out->append({"a picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\1\0", 20), true, 0, "",
        "the text ends at its first zero byte"});
}

// Every file of this project's own making that is no plain whole-body pose.
inline OddPresets oddPresets()
{
    OddPresets all;
    addLayouts(&all);
    addOtherTexts(&all);
    addCutFiles(&all);
    addPartsOfBodies(&all);
    addNoPoses(&all);
    return all;
}

} // namespace quillon
