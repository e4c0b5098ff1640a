// dzaction.h - commands: DzAction, and DzPaneAction which shows and hides a pane.
#pragma once

#include "dzcore_export.h"

#include <QAction>
#include <QPointer>
#include <QString>

class DzPane;
class DzPaneMgr;

class DZCORE_EXPORT DzAction : public QAction {
    Q_OBJECT
    Q_PROPERTY(QString description READ getDescription WRITE setDescription)
    Q_PROPERTY(QString iconFile READ getIconFile WRITE setIconFile)
public:
    DzAction(const QString& text, const QString& description);
    ~DzAction() override;

    Q_INVOKABLE QString className() const;
    QString getDescription() const;
    void setDescription(const QString&); // also the status tip

    virtual QString getActionGroup() const; // heading in lists of actions; base: empty
    virtual QString getDefaultMenuPath() const; // "&File/Send To"; base: empty, in no menu

    QString getIconFile() const;
    Q_INVOKABLE void setIconFile(const QString& path); // the icon changes at once

protected slots:
    virtual void executeAction(); // what triggering does; base: nothing

private slots:
    void executeIfEnabled(); // QAction::trigger() does not look

private:
    QString m_description, m_iconFile;
};

class DZCORE_EXPORT DzPaneAction : public DzAction {
    Q_OBJECT
public:
    explicit DzPaneAction(const QString& paneClassName);
    ~DzPaneAction() override;

    QString getPaneClassName() const;
    QString getActionGroup() const override; // "Panes"
    QString getDefaultMenuPath() const override; // "&Window/Panes (Tabs)"

protected slots:
    // Hides the pane when it is in front, otherwise shows it; makes it through its class factory
    // when there is none. The check mark follows the pane.
    void executeAction() override;

private slots:
    void followPane(DzPane*);
    void paneShownOrHidden(bool visible);
    void paneLabelChanged(const QString& label);
    void paneDestroyed();

private:
    friend class DzActionMgr;
    void bind(DzPaneMgr*); // follows the pane, now and whenever one is added
    DzPaneMgr* paneMgr() const;

    QString m_paneClassName;
    QPointer<DzPaneMgr> m_paneMgr;
    QPointer<DzPane> m_pane;
};
