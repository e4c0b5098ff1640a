// dzdockwindow.h - a widget that lives in a dock area of the main window or floats above it.
// It sits in a QDockWidget of its own (the frame), which carries the title bar and takes part in
// dragging. Minimised means collapsed to a narrow strip with a button that restores.
// Show and hide act on the frame; width and height are those of the widget without the title bar.
#pragma once

#include "dzcore_export.h"

#include <QPointer>
#include <QScriptValue>
#include <QScriptable>
#include <QSize>
#include <QWidget>

class DzDockStrip;
class QDockWidget;
class QMainWindow;
class QVBoxLayout;

class DZCORE_EXPORT DzDockWindow : public QWidget, protected QScriptable {
    Q_OBJECT
    // Scripts call width() and height() as functions. They would find QWidget's properties of the
    // same names first, so these take their place.
    Q_PROPERTY(QScriptValue width READ scriptWidth)
    Q_PROPERTY(QScriptValue height READ scriptHeight)
public:
    explicit DzDockWindow(QMainWindow*); // floating and hidden
    ~DzDockWindow() override; // takes its frame along

    Q_INVOKABLE int width() const;
    Q_INVOKABLE int height() const;
    // The new size at once, hidden or not. Docked: nothing, the dock area decides.
    Q_INVOKABLE void resize(int w, int h);
    void resize(const QSize&);

    Q_INVOKABLE bool isDocked() const;
    Q_INVOKABLE bool isMinimized() const;
    Q_INVOKABLE bool isShown() const; // the frame is not hidden

public slots:
    void minimize(); // keeps the size for restore()
    void restore();
    void toggleMinimized();
    void dock(); // in the area where it was last; first time: on the right
    void undock();

public:
    void dock(Qt::DockWidgetArea);
    Qt::DockWidgetArea getDockArea() const; // NoDockWidgetArea while floating
    QDockWidget* getFrame() const; // for embedding applications

signals:
    void minimizedChanged(bool minimized);
    void dockedChanged(bool docked);

protected:
    void setBody(QWidget*); // what minimising hides; takes ownership, once
    void setFrameTitle(const QString&);
    void showFrame(); // and raises it
    void hideFrame(); // from inside its own showing: as soon as that is over

private slots:
    void frameFloatingChanged(bool floating);
    void frameAreaChanged(Qt::DockWidgetArea);

private:
    QScriptValue scriptWidth(); // the functions; invalid when no script asks
    QScriptValue scriptHeight();
    QScriptValue scriptFunction(const char* signature);
    bool collapsesToColumn() const; // else to a row
    void applyStripLimits();
    void giveBack(const QSize&);

    QPointer<QMainWindow> m_mainWindow;
    QPointer<QDockWidget> m_frame;
    QVBoxLayout* m_layout;
    DzDockStrip* m_strip;
    QPointer<QWidget> m_body;
    Qt::DockWidgetArea m_area;
    QSize m_sizeBefore; // of the widget when it was minimised
    bool m_minimized;
    bool m_showing, m_hideAfterShowing;
};
