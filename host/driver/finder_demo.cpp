#include "host/driver/finder_demo.h"

#include "host/body/figure_picture.h"
#include "host/driver/modal_watch.h"
#include "host/driver/painted_pane.h"
#include "host/driver/pose_account.h"
#include "host/driver/scan_report.h"
#include "host/figures/figure_loader.h"

#include "dzfigure.h"
#include "dzscene.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QWidget>

namespace quillon {
namespace {

const char kFigure[] = "Genesis8Female";

// What the pane calls its buttons.
const char kScanButton[] = "Re-initialize Pose Finder";
const char kFinderButton[] = "Pose Finder";
const char kReferenceButton[] = "REFERENCE POSE";
const char kCategoryButtons[] = "Browse all poses";
const char kReferenceCategory[] = "REFERENCE POSE";
const char kSittingCategory[] = "Browse all poses similar to a sitting pose";
const char kPreviousButton[] = "Apply Previous Pose";
const char kNextButton[] = "Apply Next Pose";
const char kBackButton[] = "Back To";
const char kLinkButton[] = "Click here";

const QSize kFrameSize(220, 260);
const int kPictures = 8; // of a category
const int kMostSteps = 400; // from pose to pose in a category
const float kYawDeg = 35;
const float kPitchDeg = 14;

struct Demo {
    QWidget* pane;
    DzSkeleton* figure;
    int presses;
    double pictureSeconds;
    QString missing; // a button that was not there; null: none
};

// ---- the pane ----------------------------------------------------------------------------------

bool press(Demo* demo, const char* name, Qt::MouseButton button = Qt::LeftButton)
{
    ++demo->presses;
    if (pressPaneButton(demo->pane, QString(name), button))
        return true;
    demo->missing = QString(name);
    return false;
}

struct Counter {
    int ordinal = 0; // of the pose that is shown; 0: none is
    int count = 0;
    QString label; // the name of the pose, the first line below
};

Counter readCounter(QWidget* pane)
{
    static const QRegularExpression kOrdinal("POSE (\\d+) of (\\d+)$");
    static const QRegularExpression kCount("POSES FOUND: (\\d+)$");
    Counter counter;
    QRect place;
    const QRect link = paneButtonRect(pane, QString(kLinkButton));
    for (const PaintedLine& line : paintedLines(pane)) {
        const QRegularExpressionMatch ordinal = kOrdinal.match(line.text);
        const QRegularExpressionMatch count = kCount.match(line.text);
        if (ordinal.hasMatch() || count.hasMatch()) {
            place = line.rect;
            counter.ordinal = ordinal.captured(1).toInt();
            counter.count = (ordinal.hasMatch() ? ordinal.captured(2) : count.captured(1)).toInt();
        } else if (counter.label.isEmpty() && place.isValid()
            && line.rect.top() >= place.center().y() && line.rect.bottom() < link.top()) {
            counter.label = line.text;
        }
    }
    return counter;
}

// ---- the scan ----------------------------------------------------------------------------------

void answerNext(const char* button)
{
    ExpectedModal expected;
    expected.button = QString(button);
    expectModal(expected);
}

// How many poses are indexed then.
int scan(Demo* demo, const QStringList& content, QStringList* report)
{
    const int before = progressLog().size();
    answerNext("Yes");
    answerNext("OK");
    QElapsedTimer clock;
    clock.start();
    press(demo, kScanButton);
    const double seconds = double(clock.elapsed()) / 1000;
    if (modalLog().isEmpty() || progressLog().size() == before)
        return 0;
    const QString outcome = modalLog().last().text;
    static const QRegularExpression kNumberAtEnd("(\\d+)$");
    const int indexed = kNumberAtEnd.match(outcome).captured(1).toInt();
    const QList<ProgressEntry> log = progressLog().mid(before);
    *report += QString("Scan: \"%1\" after %2 s").arg(outcome).arg(seconds, 0, 'f', 2);
    const QList<PhaseCount> phases = countPhases(log, log.last().ms);
    for (const QString& line : phaseTable(phases, indexed))
        *report += QString("  ") + line;
    *report += QString("Where the presets went:");
    for (const QString& line : accountLines(phases, indexed, countPresets(content)))
        *report += QString("  ") + line;
    return indexed;
}

// ---- a category --------------------------------------------------------------------------------

SheetPicture takePicture(Demo* demo, const QString& caption)
{
    QElapsedTimer clock;
    clock.start();
    const QImage image = figurePicture(demo->figure, kYawDeg, kPitchDeg, kFrameSize);
    demo->pictureSeconds += double(clock.nsecsElapsed()) / 1e9;
    return {image, caption};
}

// Pictures from the first match on, spread over all of them; the pane shows the category.
void takePictures(Demo* demo, SheetRow* row, int* matches)
{
    press(demo, kPreviousButton, Qt::MiddleButton); // to the first match
    Counter counter = readCounter(demo->pane);
    *matches = counter.count;
    const int pictures = qMin(counter.count, kPictures);
    const int reachable = qMin(counter.count, kMostSteps);
    for (int i = 0, steps = 0; i < pictures && demo->missing.isNull(); ++i) {
        for (; steps < i * reachable / pictures; ++steps)
            press(demo, kNextButton);
        counter = readCounter(demo->pane);
        row->pictures.append(takePicture(demo, counter.label));
    }
}

// "Browse all poses similar to a sitting pose" -> "similar to a sitting pose"
QString shortName(const QString& category)
{
    QString name = category;
    name.remove(QRegularExpression(QString("^%1 ").arg(kCategoryButtons)));
    return name.section(QString(" (see"), 0, 0);
}

// The figure in a sitting pose if there is one, else as it is, becomes the reference.
void memorizeReference(Demo* demo, SheetRow* row)
{
    press(demo, kSittingCategory);
    press(demo, kPreviousButton, Qt::MiddleButton);
    const QString label = readCounter(demo->pane).label;
    press(demo, kBackButton);
    press(demo, kBackButton);
    press(demo, kReferenceButton);
    press(demo, kFinderButton);
    row->pictures.append(takePicture(demo, QString("the reference: ") + label));
}

void showCategory(Demo* demo, const QString& button, DemoResult* result)
{
    SheetRow row;
    int matches = 0;
    if (button.contains(QString(kReferenceCategory)))
        memorizeReference(demo, &row);
    press(demo, button.toUtf8().constData());
    takePictures(demo, &row, &matches);
    press(demo, kBackButton);
    row.title = QString("%1: %2").arg(shortName(button)).arg(matches);
    result->report += QString("  %1  %2").arg(matches, 6).arg(shortName(button));
    result->rows.append(row);
}

// ---- the whole ---------------------------------------------------------------------------------

DzFigure* demoFigure(QString* why) // null: *why
{
    DzNode* selected = dzScene->getPrimarySelection();
    if (DzFigure* figure = qobject_cast<DzFigure*>(selected))
        return figure;
    DzFigure* figure = loadFigure(QString(kFigure), why);
    if (!figure)
        return nullptr;
    dzScene->addNode(figure);
    dzScene->selectAllNodes(false);
    figure->select(true);
    dzScene->setPrimarySelection(figure);
    return figure;
}

void browse(Demo* demo, DemoResult* result)
{
    QElapsedTimer clock;
    clock.start();
    press(demo, kFinderButton);
    const QStringList buttons = paneButtons(demo->pane)
                                    .filter(QRegularExpression(QString("^%1").arg(kCategoryButtons),
                                        QRegularExpression::CaseInsensitiveOption));
    result->report += QString("Poses by category:");
    for (const QString& button : buttons)
        showCategory(demo, button, result);
    press(demo, kBackButton);
    const double seconds = double(clock.elapsed()) / 1000 - demo->pictureSeconds;
    result->report += QString("%1 presses in %2 s; pictures drawn in %3 s")
                          .arg(demo->presses)
                          .arg(seconds, 0, 'f', 2)
                          .arg(demo->pictureSeconds, 0, 'f', 2);
}

} // namespace

bool runFinderDemo(const QStringList& content, DemoResult* result, QString* why)
{
    QWidget* pane = findPaneWithButton(QString(kScanButton));
    if (!pane)
        return false;
    DzFigure* figure = demoFigure(why);
    if (!figure)
        return false;
    Demo demo = {pane, figure, 0, 0, QString()};
    result->report += QString("Figure: ") + figure->getName();
    for (const QString& directory : content)
        result->report += QString("Content: ") + directory;
    if (scan(&demo, content, &result->report) == 0)
        return false;
    browse(&demo, result);
    if (demo.missing.isNull())
        return true;
    *why = QString("the pane shows no button \"%1\"").arg(demo.missing);
    return false;
}

} // namespace quillon
