// time_content [--quick] - the content library of posebench with many files: how long a folder
// takes to open, each picture of its list while it scrolls, and each letter of a search whose
// newest files come first.
//
// Prints tab-separated rows: what, how many files, milliseconds, a limit, milliseconds of the clock
// on the wall. The first are of the processor, as the machine may have other work; of scrolling the
// middle one, the one that 99 of 100 stay below, and the longest. Every preset has a picture beside
// it, read for the first time.
// --quick: few files.
#include "host/posebench/content_library_pane.h"
#include "host/posebench/posebench_window.h"

#include "dzapp.h"
#include "dzcontentmgr.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <vector>

static const int kFrames = 600; // ten seconds at 60 a second
static const int kStepPx = 45; // of a frame: a fast turn of the wheel
static const double kFrameMs = 16;
static const double kOpenMs = 500;
static const double kKeyMs = 100; // what feels like at once

struct Took {
    double ms; // of the processor
    double wallMs;
};

// What has passed since it was made.
class Watch {
public:
    Watch()
        : m_processor(std::clock())
    {
        m_wall.start();
    }
    double wallMs() const
    {
        return double(m_wall.nsecsElapsed()) / 1e6;
    }
    Took took() const
    {
        return {double(std::clock() - m_processor) * 1000 / CLOCKS_PER_SEC, wallMs()};
    }

private:
    std::clock_t m_processor;
    QElapsedTimer m_wall;
};

static void row(const char* name, int files, const Took& took, double limitMs)
{
    std::printf("%s\t%d\t%.2f\t%.0f\t%.2f\t%s\n", name, files, took.ms, limitMs, took.wallMs,
        took.ms <= limitMs ? "" : "OVER");
}

static void makePresets(const QString& folder, int count, bool pictures)
{
    QDir().mkpath(folder);
    QImage picture(91, 91, QImage::Format_RGB32);
    for (int y = 0; y < 91; ++y)
        for (int x = 0; x < 91; ++x)
            picture.setPixel(x, y, qRgb(x * 2, y * 2, x ^ y));
    const QString source = folder + "/first.png";
    picture.save(source, "PNG");
    for (int i = 0; i < count; ++i) {
        const QString stem
            = QString("%1/pose %2").arg(folder).arg(i * 7919 % count, 5, 10, QChar('0'));
        QFile file(stem + ".duf");
        if (!file.open(QIODevice::WriteOnly))
            std::fprintf(stderr, "cannot write %s\n", qPrintable(stem));
        if (pictures)
            QFile::link(source, stem + ".png");
    }
}

static Took openFolder(DzContentLibraryPane* pane, const QString& folder)
{
    const Watch watch;
    pane->browseToNativeFolder(folder);
    QApplication::processEvents();
    return watch.took();
}

// From the change of the scroll bar to the end of the repaint, and of what waits then. Each of the
// two times in ascending order.
static std::vector<Took> scroll(QListView* view, int frames)
{
    std::vector<double> processor, wall;
    for (int i = 0; i < frames; ++i) {
        const Watch watch;
        view->verticalScrollBar()->setValue(view->verticalScrollBar()->value() + kStepPx);
        QApplication::processEvents();
        processor.push_back(watch.took().ms);
        wall.push_back(watch.wallMs());
        while (watch.wallMs() < kFrameMs)
            QApplication::processEvents(); // the rest of the frame is the pictures'
    }
    std::sort(processor.begin(), processor.end());
    std::sort(wall.begin(), wall.end());
    std::vector<Took> times;
    for (size_t i = 0; i < processor.size(); ++i)
        times.push_back({processor[i], wall[i]});
    return times;
}

static Took orderBy(DzContentLibraryPane* pane, int order)
{
    const Watch watch;
    pane->findChild<QComboBox*>("contentOrder")->setCurrentIndex(order);
    QApplication::processEvents();
    return watch.took();
}

// The names are known when the last letter but one is typed; that one finds as many again.
static Took typeLastLetter(DzContentLibraryPane* pane, const QString& folder, int count)
{
    dzApp->getContentMgr()->setContentDirectories({folder});
    QLineEdit* search = pane->findChild<QLineEdit*>("contentSearch");
    QListView* view = pane->findChild<QListView*>("contentList");
    search->setText("po");
    while (view->model()->rowCount() < count)
        QApplication::processEvents();
    search->setText("pos");
    QApplication::processEvents();
    const Watch watch;
    search->setText("pose");
    QApplication::processEvents();
    return watch.took();
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const bool quick = argc > 1 && std::strcmp(argv[1], "--quick") == 0;
    const int many = quick ? 2000 : 20000, most = quick ? 4000 : 65536;
    QTemporaryDir home;
    makePresets(home.path() + "/many", many, true);
    makePresets(home.path() + "/most", most, false);
    DzAppSetup setup;
    setup.appDataPath = home.path();
    setup.contentDirectories << home.path();
    DzApp app(setup);
    DzUndoStack undo;
    DzScene scene;
    PoseBenchWindow window;
    window.show();
    DzContentLibraryPane* pane = window.contentPane();
    QListView* view = pane->findChild<QListView*>("contentList");
    std::printf("row\tn\tms\tlimit_ms\twall_ms\tnote\n");
    row("open folder", most, openFolder(pane, home.path() + "/most"), kOpenMs);
    row("open folder", many, openFolder(pane, home.path() + "/many"), kOpenMs);
    const std::vector<Took> times = scroll(view, quick ? 60 : kFrames);
    row("frame, middle", many, times[times.size() / 2], kFrameMs);
    row("frame, 99 of 100", many, times[times.size() * 99 / 100], kFrameMs);
    row("frame, longest", many, times.back(), kFrameMs);
    row("newest first", many, orderBy(pane, 1), kOpenMs);
    row("letter typed, newest first", many, typeLastLetter(pane, home.path() + "/many", many),
        kKeyMs);
    return 0;
}
