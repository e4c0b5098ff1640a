// dzdialog.h - root of the host's dialogs. The name is the object name, by which a host keeps
// things like its place; the window title is set separately.
#pragma once

#include "dzcore_export.h"

#include <QDialog>
#include <QString>

class DZCORE_EXPORT DzDialog : public QDialog {
    Q_OBJECT
public:
    explicit DzDialog(QWidget* parent = nullptr, const QString& name = QString());
    ~DzDialog() override;
};
