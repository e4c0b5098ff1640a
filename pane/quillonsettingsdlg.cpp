#include "pane/quillonsettingsdlg.h"

#include "pane/page_state.h"
#include "pane/plugin_settings.h"
#include "pane/status_message.h"

#include "dzapp.h"
#include "dzmainwindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QVBoxLayout>

#include <iterator>

using namespace quillon;

namespace {

const int kDialogWidth = 300;
const int kDialogHeight = 300;

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
        layout->addWidget(m_boxes[i]);
        addWidget(group);
    }
    setFixedSize(kDialogWidth, kDialogHeight);
    pageState().tablesValid = false;
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

void showSettings()
{
    DzMainWindow* window = dzApp ? dzApp->getInterface() : nullptr;
    if (!window)
        return;
    QuillonSettingsDlg dialog(window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    dialog.store();
    saveSettings();
    refreshPane();
}

} // namespace quillon
