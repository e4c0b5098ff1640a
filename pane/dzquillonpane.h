// dzquillonpane.h - the pane: one painted canvas, and the object on which the plug-in lives.
// Building the first pane starts the whole plug-in, in a fixed order with a crash marker on disk
// meanwhile; destroying the last one saves and frees everything. Panes in between share it all.
// The class is a shell: what an event does is a function in a file of its own.
#pragma once

#include "dzpane.h"

class DzQuillonPane : public DzPane {
    Q_OBJECT
public:
    DzQuillonPane();
    ~DzQuillonPane() override;

    bool eventFilter(QObject* watched, QEvent* event) override; // on itself; passes everything on

public slots:
    // The order is part of the class.
    void visibilityDidChange(bool visible); // nothing
    void toolTipsTextTimerUpdate();
    void infoBannerShowTimerUpdate();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override; // never: Tab is the host's, too

private:
    void createTimers();
    void adoptTimers(); // becomes their parent and their receiver
};
