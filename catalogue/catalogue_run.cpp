#include "catalogue/catalogue_run.h"

#include "catalogue/catalogue_contents.h"
#include "catalogue/catalogue_json.h"
#include "catalogue/catalogue_options.h"
#include "catalogue/content_scan.h"
#include "catalogue/output_folder.h"
#include "catalogue/page_data.h"
#include "catalogue/page_files.h"
#include "catalogue/picture_crew.h"
#include "catalogue/picture_store.h"
#include "catalogue/progress_lines.h"
#include "finder/pose_identify.h"
#include "host/body/own_picture.h"
#include "posefile/pose_text.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>
#include <QThread>

namespace quillon {
namespace {

// ---- writing

bool writeAll(
    const CatalogueContents& contents, const QString& output, bool isComplete, QString* why)
{
    return writeOutput(output + "/catalogue.json", catalogueJson(contents, isComplete), why)
        && writeOutput(output + "/catalogue-data.js", pageData(contents, isComplete), why)
        && writePage(output, why);
}

// ---- pictures

// Of what is no pose of these figures there is at most the preset's own picture.
bool canBeDrawn(Verdict verdict)
{
    return hasPartner(verdict) || verdict == Verdict::MakerVariant
        || verdict == Verdict::OverCapacity;
}

bool isOfMale(const QString& pose)
{
    const int count = readPoseFileText(pose, readBuffer(), kReadBufferBytes, false);
    return count > 0 && figureCodeOf(readBuffer(), count, pose) == kMaleCode;
}

struct Wanted {
    PictureJob job;
    CatalogueFile* file;
};

std::vector<Wanted> wantedPictures(CatalogueContents* contents, const QString& output)
{
    std::vector<Wanted> wanted;
    const auto want = [&](CatalogueFile* file, bool drawn, bool male) {
        PictureJob job {file->path, ownPicture(file->path), male, drawn, QString()};
        file->picture.clear();
        if (job.own.isEmpty() && !drawn)
            return;
        file->picture = pictureName(job);
        job.out = output + '/' + file->picture;
        wanted.push_back({job, file});
    };
    for (CataloguePose& pose : contents->poses)
        want(&pose.file, true, poseEntry(pose.entry)->figureCode == kMaleCode);
    for (LeftOutFile& each : contents->leftOut) {
        const bool drawn = canBeDrawn(each.verdict);
        want(&each.file, drawn, drawn && isOfMale(each.file.path));
    }
    return wanted;
}

bool makeMissing(const std::vector<Wanted>& wanted, const CatalogueOptions& options,
    ProgressLines* progress, QString* why)
{
    std::vector<PictureJob> missing;
    for (const Wanted& each : wanted)
        if (!QFileInfo::exists(each.job.out))
            missing.push_back(each.job);
    const int total = int(wanted.size()), kept = total - int(missing.size());
    if (kept > 0)
        progress->say(QString("%1 of %2 pictures are there already").arg(kept).arg(total));
    int made = 0;
    const auto done = [&] {
        ++made;
        progress->count(kept + made, total, made);
    };
    const int workers = options.workers ? options.workers : QThread::idealThreadCount();
    return makePictures(QCoreApplication::applicationFilePath(), workers, missing, done, why);
}

// Files whose picture could not be made have none.
int forgetFailed(const std::vector<Wanted>& wanted, QSet<QString>* names)
{
    int failed = 0;
    for (const Wanted& each : wanted) {
        if (QFileInfo::exists(each.job.out)) {
            names->insert(each.file->picture);
        } else {
            each.file->picture.clear();
            ++failed;
        }
    }
    return failed;
}

bool addPictures(CatalogueContents* contents, const CatalogueOptions& options,
    ProgressLines* progress, QString* why)
{
    const std::vector<Wanted> wanted = wantedPictures(contents, options.output);
    QSet<QString> names;
    forgetFailed(wanted, &names);
    if (!writeAll(*contents, options.output, false, why))
        return false;
    for (const Wanted& each : wanted)
        each.file->picture = each.job.out.mid(options.output.size() + 1);
    if (!makeMissing(wanted, options, progress, why))
        return false;
    names.clear();
    const int failed = forgetFailed(wanted, &names);
    if (failed > 0)
        progress->say(QString("%1 files have no picture").arg(failed));
    dropOtherPictures(options.output, names);
    return writeAll(*contents, options.output, true, why);
}

bool make(const CatalogueOptions& options, ProgressLines* progress, QString* why)
{
    ContentScan scan(options);
    ScanReport report;
    const auto show = [progress](const QString& info) {
        const int at = info.indexOf("... ");
        progress->show(info.left(at), at < 0 ? QString() : info.mid(at + 4));
    };
    if (!scan.run(options, show, &report, why))
        return false;
    CatalogueContents contents = makeContents(options.content, report, scan);
    progress->say(QString("%1 poses of %2 files found")
                      .arg(contents.poses.size())
                      .arg(contents.poses.size() + contents.leftOut.size()));
    return addPictures(&contents, options, progress, why);
}

int complain(const QString& why, int code)
{
    QTextStream(stderr) << "quillon-catalogue: " << why << '\n';
    return code;
}

} // namespace

int runCatalogue(const CatalogueOptions& options)
{
    QString why;
    if (!canTakeCatalogue(options.output, &why))
        return complain(why, kExitRefused);
    {
        ProgressLines progress;
        make(options, &progress, &why);
    }
    if (!why.isEmpty())
        return complain(why, kExitFailed);
    QTextStream(stdout) << options.output << "/index.htm\n";
    return 0;
}

} // namespace quillon
