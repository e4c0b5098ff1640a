// pose_corpora.h - the collections of whole-body poses that tests go through: the samples, others
// made here, and real ones where they lie beside the project (pose_fixture.h, sharedPoses()).
#pragma once

#include "odd_presets.h"

#include "figure/bone_table.h"

#include <cstring>
#include <iterator>

namespace quillon {

inline QByteArray unpackedFile(const QString& path)
{
    QFile file(path);
    DzGzIO gzip(&file);
    if (!gzip.open(QIODevice::ReadOnly))
        return QByteArray();
    const QByteArray text = gzip.readAll();
    return text.isEmpty() ? fileBytes(path) : text;
}

// The samples that pose every bone of a figure of this generation, by words of their own.
inline QStringList wholeBodySamples()
{
    QStringList paths;
    for (const QString& path : presetsIn(QLatin1String(QUILLON_SOURCE_DIR "/samples/content"))) {
        const QByteArray text = unpackedFile(path);
        if (text.endsWith('}') && text.contains("\"preset_pose\"")
            && text.contains("@selection/rBigToe:") && text.contains("@selection/chestUpper:"))
            paths << path;
    }
    return paths;
}

// Samples in each of the layouts, written into the folder; another pose in each.
inline QStringList oddWholeBodies(const QString& folder)
{
    const QStringList samples = wholeBodySamples();
    QStringList paths;
    for (int i = 0; i < kOddLayoutCount && !samples.isEmpty(); ++i) {
        const OddLayout& layout = kOddLayouts[i];
        const QString path = folder + QLatin1Char('/') + QLatin1String(layout.name) + ".duf";
        const QByteArray host = unpackedFile(samples.at(i * samples.size() / kOddLayoutCount));
        writeFile(path, inLayout(layout, host));
        paths << path;
    }
    return paths;
}

// Every bone turned and moved at random, into locks and beyond limits; one in each layout.
inline QStringList wildWholeBodies(const QString& folder)
{
    static const char* const kChannels[] = {":?rotation/x", ":?rotation/y", ":?rotation/z",
        ":?translation/x", ":?translation/y", ":?translation/z"};
    Random random(1949);
    QStringList paths;
    for (const OddLayout& layout : kOddLayouts) {
        QList<QByteArray> entries;
        for (int i = 0; i <= kBoneCount; ++i) { // the last is the figure, which is moved only
            const QByteArray bone = i < kBoneCount ? '/' + QByteArray(kBoneTable[i]) : QByteArray();
            for (const char* channel : kChannels) {
                const bool still = i == kBoneCount && std::strstr(channel, "rotation");
                const double value = still ? 0 : random.between(-180, 180);
                entries << valueEntry(
                    (bone + channel).constData(), QByteArray::number(value, 'g', 7).constData());
            }
        }
        paths << folder + QLatin1Char('/') + QLatin1String(layout.name) + ".duf";
        writeFile(paths.last(), inLayout(layout, presetText(entries)));
    }
    return paths;
}

// A collection of whole-body poses that a test goes through.
struct PoseCorpus {
    const char* name;
    QStringList files;
    int least; // so many are there, or it is no reason to pass
    bool pastLimits; // poses into locks and beyond limits
};

// The samples, others made here, and the real ones where they lie beside the project.
inline QList<PoseCorpus> poseCorpora(const QString& folder)
{
    QList<PoseCorpus> all;
    all << PoseCorpus {"samples", wholeBodySamples(), 250, false}
        << PoseCorpus {"odd layouts", oddWholeBodies(folder + "/odd"), kOddLayoutCount, false}
        << PoseCorpus {"past limits", wildWholeBodies(folder + "/wild"), kOddLayoutCount, true};
    if (QDir(sharedPoses()).exists())
        all << PoseCorpus {"motion capture", presetsIn(sharedPoses() + "/mocap"), 600, true};
    return all;
}

// For the output: which poses a run has gone through.
inline void tellPoseCorpora(const QList<PoseCorpus>& all)
{
    for (const PoseCorpus& each : all)
        qDebug("poses: %s, %d files", each.name, int(each.files.size()));
    if (!QDir(sharedPoses()).exists())
        qDebug("poses: only the project's own, for there is no %s", qPrintable(sharedPoses()));
}

// ---- rows of a test that goes through them on every figure

// Of many files each figure takes its share, and all figures together every file; of few all.
inline QStringList filesFor(int figure, const PoseCorpus& corpus)
{
    static const int kMany = 100, kFigures = int(std::size(kTestFigures));
    if (corpus.files.size() < kMany)
        return corpus.files;
    QStringList share;
    for (int i = figure; i < corpus.files.size(); i += kFigures)
        share << corpus.files.at(i);
    return share;
}

inline void addCorpusRows(const QList<PoseCorpus>& corpora)
{
    QTest::addColumn<QString>("figure");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<bool>("pastLimits");
    for (const PoseCorpus& corpus : corpora) {
        QVERIFY2(corpus.files.size() >= corpus.least, corpus.name);
        for (int i = 0; i < int(std::size(kTestFigures)); ++i)
            QTest::newRow(qPrintable(QString("%1, %2").arg(corpus.name, kTestFigures[i])))
                << QString(kTestFigures[i]) << filesFor(i, corpus) << corpus.pastLimits;
    }
}

} // namespace quillon
