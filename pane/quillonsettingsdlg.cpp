#include "pane/quillonsettingsdlg.h"

#include "finder/browse_session.h"
#include "finder/index_saves.h"
#include "ground/plugin_settings.h"
#include "ground/status_message.h"

#include "dzapp.h"
#include "dzmainwindow.h"

#include <QCheckBox>
#include <QFontInfo>
#include <QGroupBox>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

using namespace quillon;

namespace {

const int kSettingsDialogWidth = 300;
const int kSettingsDialogHeight = 300;
const int kGroupMargin = 6;
const int kSmallestLabelPx = 8;

struct SwitchRow {
    const char* label;
    bool PluginSettings::*shown; // field that the box shows
    bool PluginSettings::*stored; // field that a checked or unchecked box sets
};

// Two rows store into one field: face limits cannot be released without the body's.
const SwitchRow kSwitches[] = {
    {" Allow pose limits violation in Pose Finder", &PluginSettings::allowPoseViolation,
        &PluginSettings::allowPoseViolation},
    {" Allow face expression limits violation in Pose Finder", &PluginSettings::allowFaceViolation,
        nullptr},
    {" Allow bone translations ", &PluginSettings::allowTranslations,
        &PluginSettings::allowTranslations},
    {" Ignore poses from pose-pair products ", &PluginSettings::ignorePosePairs,
        &PluginSettings::ignorePosePairs},
    {" Don't notify me about plugin updates ", &PluginSettings::muteUpdateNotice,
        &PluginSettings::muteUpdateNotice},
};

} // namespace

QuillonSettingsDlg::QuillonSettingsDlg(QWidget* parent)
    : DzBasicDialog(parent, QLatin1String("Quillon"))
{
    static_assert(std::size(kSwitches) == BoxCount, "one box per row");
    setWindowTitle(QLatin1String("Quillon Settings"));
    showHelpButton(false);
    for (int i = 0; i < BoxCount; ++i) {
        QGroupBox* group = new QGroupBox;
        m_boxes[i] = new QCheckBox(QLatin1String(kSwitches[i].label));
        m_boxes[i]->setChecked(pluginSettings().*kSwitches[i].shown);
        QVBoxLayout* layout = new QVBoxLayout(group);
        layout->setContentsMargins(kGroupMargin, kGroupMargin, 0, kGroupMargin);
        layout->addWidget(m_boxes[i]);
        addWidget(group);
    }
    fitLabels();
    setFixedSize(kSettingsDialogWidth, kSettingsDialogHeight);
    forgetApplied(&browseSession());
}

// The size is fixed and the labels are long: where the host's font is wide, a smaller one is taken.
void QuillonSettingsDlg::fitLabels()
{
    const QMargins outer = layout()->contentsMargins();
    const int room = kSettingsDialogWidth - outer.left() - outer.right() - 2 * kGroupMargin;
    QFont smaller = font();
    for (int px = QFontInfo(smaller).pixelSize(); px >= kSmallestLabelPx; --px) {
        smaller.setPixelSize(px);
        int widest = 0;
        for (QCheckBox* box : m_boxes) {
            box->setFont(smaller);
            widest = std::max(widest, box->sizeHint().width());
        }
        if (widest <= room)
            return;
    }
}

void QuillonSettingsDlg::store() const
{
    PluginSettings& s = pluginSettings();
    for (int i = 0; i < BoxCount; ++i) {
        if (kSwitches[i].stored) {
            s.*kSwitches[i].stored = m_boxes[i]->isChecked();
            continue;
        }
        s.allowFaceViolation = false;
        if (m_boxes[i]->isChecked())
            s.allowPoseViolation = true;
    }
}

namespace quillon {

bool showSettings()
{
    DzMainWindow* window = dzApp ? dzApp->getInterface() : nullptr;
    if (!window)
        return true;
    QuillonSettingsDlg dialog(window);
    if (dialog.exec() != QDialog::Accepted)
        return true;
    dialog.store();
    const bool saved = saveSettingsAndPosition();
    refreshPane();
    return saved;
}

} // namespace quillon
