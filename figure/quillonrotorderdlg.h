// quillonrotorderdlg.h - the modal dialog of a prop's origin, rotation order and nudge step.
#pragma once

#include "ground/host_types.h"

#include "dzbasicdialog.h"

class QLineEdit;
class QRadioButton;

class QuillonRotOrderDlg : public DzBasicDialog {
    Q_OBJECT
public:
    // Shows the settings as they are, and the order given.
    QuillonRotOrderDlg(QWidget* parent, DzRotationOrder order);

    int originChoice() const; // 0 to 3; 0 when no button is checked
    int rotationOrder() const; // 0 to 5 as the host numbers them; -1: no button is checked
    float nudgeCm() const; // as typed; 0.5 when that is no finite number

private:
    enum { OriginCount = 4, OrderCount = 6 };
    void addGroup(const char* title, const QList<QWidget*>& content);
    void fitFont();

    QRadioButton* m_origins[OriginCount];
    QRadioButton* m_orders[OrderCount];
    QLineEdit* m_nudge;
};

namespace quillon {

// Runs the dialog. Accepted: the order is the checked one, if any, and origin choice and nudge are
// in the settings, which are saved with the pane and not here. False, with nothing changed:
// cancelled, or the host has no main window.
bool runRotationOrderDialog(DzRotationOrder* order);

} // namespace quillon
