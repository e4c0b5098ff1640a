#include "host/posebench/plugin_list_dialog.h"

#include "host/posebench/guide_address.h"

#include "dzapp.h"
#include "dzplugin.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QMessageBox>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

PluginListDialog::PluginListDialog(QWidget* parent)
    : QDialog(parent)
    , m_list(new QListWidget)
    , m_text(new QTextBrowser)
{
    setWindowTitle(tr("About Installed Plug-ins"));
    m_text->setOpenLinks(false);
    for (int i = 0; dzApp && i < dzApp->getNumPlugins(); ++i)
        m_list->addItem(dzApp->getPlugin(i)->getName());
    m_list->setMaximumWidth(180);
    QHBoxLayout* sides = new QHBoxLayout;
    sides->addWidget(m_list);
    sides->addWidget(m_text, 1);
    QDialogButtonBox* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QVBoxLayout* layout = new QVBoxLayout(this);
    layout->addLayout(sides, 1);
    layout->addWidget(buttons);
    resize(640, 380);
    connect(m_list, SIGNAL(currentRowChanged(int)), SLOT(showPlugin(int)));
    connect(m_text, SIGNAL(anchorClicked(QUrl)), SLOT(openLink(QUrl)));
    connect(buttons, SIGNAL(rejected()), SLOT(reject()));
    if (m_list->count())
        m_list->setCurrentRow(0);
    else
        m_text->setPlainText(tr("No plug-in is loaded."));
}

void PluginListDialog::showPlugin(int row)
{
    const DzPlugin* plugin = dzApp->getPlugin(row);
    if (!plugin)
        return;
    m_text->setHtml(QString("<h3>%1</h3><p>Version %2<br>By %3<br><small>%4</small></p>%5")
                        .arg(plugin->getName().toHtmlEscaped(), plugin->getVersionString(),
                            plugin->getAuthor().toHtmlEscaped(),
                            plugin->getFilename().toHtmlEscaped(), plugin->getDescription()));
}

void PluginListDialog::openLink(const QUrl& url)
{
    QString why;
    if (!quillon::openAddress(url.toString(), &why))
        QMessageBox::warning(this, windowTitle(), why);
}
