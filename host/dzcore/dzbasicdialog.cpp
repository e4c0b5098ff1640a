#include "dzbasicdialog.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWhatsThis>

DzBasicDialog::DzBasicDialog(QWidget* parent, const QString& name)
    : DzDialog(parent, name)
    , m_content(new QVBoxLayout)
    , m_help(new QPushButton(tr("What's This")))
    , m_accept(new QPushButton(tr("&Accept")))
    , m_cancel(new QPushButton(tr("&Cancel")))
{
    QHBoxLayout* buttons = new QHBoxLayout;
    buttons->addWidget(m_help);
    buttons->addStretch(1);
    buttons->addWidget(m_accept);
    buttons->addWidget(m_cancel);
    QVBoxLayout* all = new QVBoxLayout(this);
    all->addLayout(m_content, 1);
    all->addStretch(0); // takes what the content cannot
    all->addLayout(buttons);
    m_accept->setDefault(true);
    m_help->setAutoDefault(false);
    connect(m_help, SIGNAL(clicked()), SLOT(startWhatsThis()));
    connect(m_accept, SIGNAL(clicked()), SLOT(accept()));
    connect(m_cancel, SIGNAL(clicked()), SLOT(reject()));
}

DzBasicDialog::~DzBasicDialog()
{
}

void DzBasicDialog::addWidget(QWidget* widget, int stretch, Qt::Alignment alignment)
{
    m_content->addWidget(widget, stretch, alignment);
}

void DzBasicDialog::addLayout(QLayout* layout, int stretch)
{
    m_content->addLayout(layout, stretch);
}

void DzBasicDialog::addSpacing(int px)
{
    m_content->addSpacing(px);
}

void DzBasicDialog::showHelpButton(bool onOff)
{
    m_help->setVisible(onOff);
}

void DzBasicDialog::showAcceptButton(bool onOff)
{
    m_accept->setVisible(onOff);
}

void DzBasicDialog::showCancelButton(bool onOff)
{
    m_cancel->setVisible(onOff);
}

void DzBasicDialog::setAcceptButtonText(const QString& text)
{
    m_accept->setText(text);
}

void DzBasicDialog::setCancelButtonText(const QString& text)
{
    m_cancel->setText(text);
}

void DzBasicDialog::startWhatsThis()
{
    QWhatsThis::enterWhatsThisMode();
}
