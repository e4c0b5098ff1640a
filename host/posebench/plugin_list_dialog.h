// plugin_list_dialog.h - what each loaded plug-in tells of itself. Links open through
// dzApp->showURL.
#pragma once

#include <QDialog>

class QListWidget;
class QTextBrowser;
class QUrl;

class PluginListDialog : public QDialog {
    Q_OBJECT
public:
    explicit PluginListDialog(QWidget* parent);

private slots:
    void showPlugin(int row);
    void openLink(const QUrl& url);

private:
    QListWidget* m_list;
    QTextBrowser* m_text;
};
