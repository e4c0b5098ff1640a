// dzpane.h - a widget that lives as a tab of a pane group.
#pragma once

#include "dzcore_export.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class DzPaneGroup;
class DzPaneMgr;

class DZCORE_EXPORT DzPane : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString label READ getLabel WRITE setLabel)
public:
    explicit DzPane(const QString& label);
    ~DzPane() override; // leaves its group and the manager

    Q_INVOKABLE QString getLabel() const;
    Q_INVOKABLE void setLabel(const QString&);
    Q_INVOKABLE DzPaneGroup* getPaneGroup() const; // null before it was placed

public slots:
    // Moves the pane, at once, with its tab if it had one or was never placed. Re-parenting hides
    // and shows it, so hide and show events arrive before this returns; it may be called from a
    // show event of the pane. Nothing happens for null and for the group it is in. A minimised
    // group stays minimised.
    void moveToGroup(DzPaneGroup*);
    // Through the pane manager; without a group the pane gets a floating one of its own.
    void showPane();
    void hidePane();

signals:
    void labelChanged(const QString& label);
    void paneGroupChanged(DzPaneGroup* before, DzPaneGroup* now);
    void visibilityChanged(bool visible); // became visible or hidden, as a tab in front or not

protected:
    bool event(QEvent*) override;

private:
    void placeIn(DzPaneGroup*);
    void tellVisibility();

    friend class DzPaneGroup;
    friend class DzPaneMgr;

    QString m_label;
    QPointer<DzPaneGroup> m_group;
    QPointer<DzPaneMgr> m_paneMgr;
    bool m_visible; // as last told by visibilityChanged
    bool m_moving; // no visibilityChanged while it changes its group
};
