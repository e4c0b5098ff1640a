#include "figure/quillonrotorderdlg.h"

#include "ground/plugin_settings.h"
#include "ground/status_message.h"

#include "dzapp.h"
#include "dzmainwindow.h"

#include <QFontInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

#include <cmath>
#include <iterator>

using namespace quillon;

namespace {

const int kOrderDialogWidth = 220;
const int kOrderDialogHeight = 360;
const int kSmallestFontPx = 8;
// The size is fixed, the rows are many.
const int kDialogMarginPx = 6;
const int kRowGapPx = 0;
const int kGroupMarginPx = 2; // above and below the rows
const float kFallbackNudgeCm = 0.5f;

const char* const kOriginLabels[]
    = {"No change", "Imported model origin", "Object center", "Current world center"};
const char* const kOrderLabels[] = {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"}; // host's 0 to 5

QList<QWidget*> radioButtons(
    const char* const* labels, int count, int checked, QRadioButton** buttons)
{
    QList<QWidget*> widgets;
    for (int i = 0; i < count; ++i) {
        buttons[i] = new QRadioButton(QLatin1String(labels[i]));
        buttons[i]->setChecked(i == checked);
        widgets.append(buttons[i]);
    }
    return widgets;
}

int checkedOf(QRadioButton* const* buttons, int count)
{
    for (int i = 0; i < count; ++i)
        if (buttons[i]->isChecked())
            return i;
    return -1;
}

} // namespace

QuillonRotOrderDlg::QuillonRotOrderDlg(QWidget* parent, DzRotationOrder order)
    : DzBasicDialog(parent, QLatin1String("QuillonRotOrderDlg"))
    , m_nudge(new QLineEdit)
{
    static_assert(std::size(kOriginLabels) == OriginCount, "one button per choice");
    static_assert(std::size(kOrderLabels) == OrderCount, "one button per order");
    setWindowTitle(QLatin1String("Optimize Prop Origin"));
    showHelpButton(false);
    const PluginSettings& settings = pluginSettings();
    addGroup(" Origin ", radioButtons(kOriginLabels, OriginCount, settings.propOrigin, m_origins));
    addGroup(" Rotation order ", radioButtons(kOrderLabels, OrderCount, order.order(), m_orders));
    m_nudge->setText(QString::fromLatin1("%1").arg(double(settings.translationNudge)));
    addGroup(" Translation nudge ", QList<QWidget*>() << m_nudge);
    layout()->setContentsMargins(
        kDialogMarginPx, kDialogMarginPx, kDialogMarginPx, kDialogMarginPx);
    setFixedSize(kOrderDialogWidth, kOrderDialogHeight);
    fitFont();
    m_origins[originChoice()]->setFocus(); // the host's buttons come after the rows, not before
}

void QuillonRotOrderDlg::addGroup(const char* title, const QList<QWidget*>& content)
{
    QGroupBox* group = new QGroupBox(QLatin1String(title));
    group->setAlignment(Qt::AlignHCenter);
    QVBoxLayout* layout = new QVBoxLayout(group);
    layout->setSpacing(kRowGapPx);
    QMargins margins = layout->contentsMargins();
    margins.setTop(kGroupMarginPx);
    margins.setBottom(kGroupMarginPx);
    layout->setContentsMargins(margins);
    for (int i = 0; i < content.size(); ++i)
        layout->addWidget(content.at(i));
    addWidget(group);
}

// A host with a style sheet does not hand a dialog's font down to what is in it.
static void setFontOfAll(QDialog* dialog, const QFont& font)
{
    const QList<QWidget*> all = dialog->findChildren<QWidget*>();
    for (int i = 0; i < all.size(); ++i)
        all.at(i)->setFont(font);
}

static bool isRoomy(QDialog* dialog)
{
    const QList<QGroupBox*> groups = dialog->findChildren<QGroupBox*>();
    for (int i = 0; i < groups.size(); ++i)
        groups.at(i)->layout()->activate(); // from the rows up, instead of the event loop
    dialog->layout()->activate();
    const QSize needed = dialog->layout()->minimumSize();
    return needed.width() <= kOrderDialogWidth && needed.height() <= kOrderDialogHeight;
}

// The dialog's size is fixed, the host's font is not.
void QuillonRotOrderDlg::fitFont()
{
    ensurePolished();
    QFont smaller = font();
    for (int px = QFontInfo(smaller).pixelSize(); px > kSmallestFontPx && !isRoomy(this); --px) {
        smaller.setPixelSize(px - 1);
        setFontOfAll(this, smaller);
    }
}

int QuillonRotOrderDlg::originChoice() const
{
    return qMax(0, checkedOf(m_origins, OriginCount));
}

int QuillonRotOrderDlg::rotationOrder() const
{
    return checkedOf(m_orders, OrderCount);
}

// Read byte by byte: a text as such is read in the user's locale first by the older toolkit, which
// also refuses blanks behind the number.
float QuillonRotOrderDlg::nudgeCm() const
{
    bool isNumber = false;
    const float stepCm = m_nudge->text().toUtf8().trimmed().toFloat(&isNumber);
    return isNumber && std::isfinite(stepCm) ? stepCm : kFallbackNudgeCm;
}

namespace quillon {

bool runRotationOrderDialog(DzRotationOrder* order)
{
    DzMainWindow* window = dzApp ? dzApp->getInterface() : nullptr;
    if (!window)
        return false;
    QuillonRotOrderDlg dialog(window, *order);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    pluginSettings().propOrigin = dialog.originChoice();
    pluginSettings().translationNudge = dialog.nudgeCm();
    if (dialog.rotationOrder() >= 0)
        *order = DzRotationOrder::RotOrder(dialog.rotationOrder());
    refreshPane();
    return true;
}

} // namespace quillon
