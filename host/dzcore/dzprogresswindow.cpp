#include "dzprogresswindow.h"
#include "dzprogress.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

static const int kMinimumWidthPx = 420;

DzProgressWindow::DzProgressWindow(QWidget* parent, const QString& title)
    : QDialog(parent)
    , m_rowLayout(new QVBoxLayout)
    , m_elapsed(new QLabel)
    , m_button(new QPushButton(tr("&Cancel")))
    , m_cancelState(NotCancellable)
    , m_finished(false)
{
    setObjectName(QString::fromLatin1("DzProgressWindow"));
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    setMinimumWidth(kMinimumWidthPx);
    QHBoxLayout* below = new QHBoxLayout;
    below->addWidget(m_elapsed);
    below->addStretch(1);
    below->addWidget(m_button);
    QVBoxLayout* all = new QVBoxLayout(this);
    all->addLayout(m_rowLayout);
    all->addStretch(1);
    all->addLayout(below);
    m_button->hide();
    m_elapsed->hide();
    m_clock.start();
    connect(m_button, SIGNAL(clicked()), SLOT(reject()));
}

void DzProgressWindow::addRow()
{
    Row row = {new QLabel, new QProgressBar};
    row.info->setTextFormat(Qt::PlainText);
    row.bar->setMinimum(0);
    m_rowLayout->addWidget(row.info);
    m_rowLayout->addWidget(row.bar);
    m_rows.append(row);
}

void DzProgressWindow::removeRow()
{
    const Row row = m_rows.takeLast();
    delete row.info;
    delete row.bar;
}

void DzProgressWindow::setRow(int i, const QString& info, int position, int total)
{
    const Row& row = m_rows.at(i);
    row.info->setText(info);
    row.bar->setMaximum(total); // 0: the bar only moves to and fro
    row.bar->setTextVisible(total > 0);
    row.bar->setValue(position);
}

void DzProgressWindow::setCancelState(CancelState state)
{
    m_cancelState = state;
    m_button->setVisible(state != NotCancellable);
    m_button->setEnabled(state == Cancellable);
    m_button->setText(state == Cancelling ? tr("Cancelling...") : tr("&Cancel"));
}

void DzProgressWindow::showElapsed(bool onOff)
{
    m_elapsed->setVisible(onOff);
    updateElapsed();
}

void DzProgressWindow::updateElapsed()
{
    const int seconds = int(m_clock.elapsed() / 1000);
    m_elapsed->setText(tr("Elapsed: %1:%2:%3")
                           .arg(seconds / 3600)
                           .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
                           .arg(seconds % 60, 2, 10, QLatin1Char('0')));
}

void DzProgressWindow::leaveOpen()
{
    m_finished = true;
    setAttribute(Qt::WA_DeleteOnClose);
    m_button->setText(tr("&Close"));
    m_button->setEnabled(true);
    m_button->show();
}

void DzProgressWindow::reject()
{
    if (m_finished)
        QDialog::reject();
    else if (m_cancelState == Cancellable)
        DzProgress::cancelByUser();
}
