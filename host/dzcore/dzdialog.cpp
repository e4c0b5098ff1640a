#include "dzdialog.h"

DzDialog::DzDialog(QWidget* parent, const QString& name)
    : QDialog(parent)
{
    setObjectName(name);
}

DzDialog::~DzDialog()
{
}
