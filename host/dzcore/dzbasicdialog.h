// dzbasicdialog.h - a dialog with the host's row of buttons below whatever is added to it:
// "What's This" on the left (starts the pointer's help mode), Accept (the default) and Cancel on
// the right. All three are shown unless told otherwise.
#pragma once

#include "dzdialog.h"

class QLayout;
class QPushButton;
class QVBoxLayout;

class DZCORE_EXPORT DzBasicDialog : public DzDialog {
    Q_OBJECT
public:
    explicit DzBasicDialog(QWidget* parent = nullptr, const QString& name = QString());
    ~DzBasicDialog() override;

    // From top to bottom, in order of calls; the dialog takes ownership. Spacing in pixels.
    void addWidget(QWidget*, int stretch = 0, Qt::Alignment alignment = Qt::Alignment());
    void addLayout(QLayout*, int stretch = 0);
    void addSpacing(int px);

    void showHelpButton(bool onOff);
    void showAcceptButton(bool onOff);
    void showCancelButton(bool onOff);
    void setAcceptButtonText(const QString&);
    void setCancelButtonText(const QString&);

private slots:
    void startWhatsThis();

private:
    QVBoxLayout* m_content;
    QPushButton* m_help;
    QPushButton* m_accept;
    QPushButton* m_cancel;
};
