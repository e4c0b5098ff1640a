// rewrite_fixture.h - presets in the writer's layout, made block by block, and what rewriting made
// of them.
#pragma once

#include "pose_fixture.h"

#include "posefile/pose_rewriter.h"

namespace quillon {

inline QByteArray urlLine(const char* url)
{
    return QByteArray("            \"url\" : \"name://@selection") + url + "/value\",";
}

inline QByteArray keysLine(const char* value)
{
    return QByteArray("            \"keys\" : [ [ 0, ") + value + " ] ]";
}

// What is asked of a rewriting; by default the selected bones alone.
struct Rewrite {
    bool withChildren = false;
    bool symmetrize = false;
    bool includeFace = true;
    bool mirrorAll = false;
};

inline QByteArray rewritten(const PoseFixture& f, const QByteArray& text, const Rewrite& ask)
{
    const QString in = f.fileWith("in.duf", text), out = f.file("out.duf");
    clearTouchedBones();
    const bool done = rewritePoseFile(
        in, out, f.figure, ask.withChildren, ask.symmetrize, ask.includeFace, ask.mirrorAll);
    return done ? fileBytes(out) : QByteArray("not written");
}

inline Rewrite all()
{
    Rewrite ask;
    ask.mirrorAll = true;
    return ask;
}

inline QByteArray block(const char* url, const char* value, bool last = false)
{
    return "         {\n" + urlLine(url) + "\n" + keysLine(value) + "\n"
        + (last ? "         }\n" : "         },\n");
}

static const char kHead[] = "{\n   \"lHand:?rotation/y/value\"\n      \"animations\" : [\n";

// The values of a rewritten text in order, as "url value".
inline QStringList entriesOf(const QByteArray& text)
{
    QStringList out;
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i + 1 < lines.size(); ++i) {
        const int url = lines.at(i).indexOf("@selection");
        const int value = lines.at(i + 1).indexOf("[ [ 0, ");
        if (url >= 0 && value >= 0)
            out << lines.at(i).mid(url + 10, lines.at(i).lastIndexOf("/value") - url - 10) + " "
                    + lines.at(i + 1).mid(value + 7, lines.at(i + 1).indexOf(" ]") - value - 7);
    }
    return out;
}

inline QStringList touchedBones()
{
    QStringList names;
    for (int i = 0; i < kBoneCount; ++i) {
        if (isBoneTouched(i))
            names << boneName(i);
    }
    return names;
}

} // namespace quillon
