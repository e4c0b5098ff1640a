// parameter_panel.h - the channels of the primary selection as sliders.
//   drag a bar          changes the value, one undo step       click a number    types a value
//   double click a bar  back to the default value              padlock, limits   switch the flags
//   click a heading     folds its group                        the field on top  filters
//   Up, Down            from slider to slider                  Left, Right       change the value
//   Enter               types a value, folds a group           L, C              lock, clamp
#pragma once

#include "host/posebench/parameter_rows.h"

#include "dzpane.h"

#include <QAbstractScrollArea>
#include <QPointer>

class DzNode;
class QLabel;
class QLineEdit;

class DzParameterList : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit DzParameterList(QWidget* parent = nullptr);

public slots:
    void setFilter(const QString& text);
    void rebuild();
    void refresh(); // values or flags may have changed

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    bool viewportEvent(QEvent*) override;
    bool eventFilter(QObject* watched, QEvent*) override; // of the field for typing
    void keyPressEvent(QKeyEvent*) override;
    void focusInEvent(QFocusEvent*) override;
    void focusOutEvent(QFocusEvent*) override;

private slots:
    void takeTypedValue();

private:
    QRect rowRect(int row) const;
    int rowAt(const QPoint& px, quillon::RowPart* part) const; // -1: none
    void updateRange();
    void startTyping(int row);
    int endTyping();
    void dragTo(int x);
    void pressPart(int row, quillon::RowPart part);
    void foldOrUnfold(int heading);
    void makeCurrent(int row); // and brings it into view
    bool moveCurrent(int key); // false: no such key
    bool changeCurrent(int key, Qt::KeyboardModifiers modifiers); // likewise
    int propertyCount() const;

    std::vector<quillon::ParameterRow> m_rows;
    QSet<QString> m_folded;
    QString m_filter;
    int m_knownProperties;
    int m_dragRow; // -1: none
    int m_dragX;
    int m_currentRow; // that keys act on; -1: none yet
    QLineEdit* m_editor;
    int m_editedRow;
};

class DzParametersPane : public DzPane {
    Q_OBJECT
public:
    DzParametersPane();

private slots:
    void showTitle();

private:
    QLabel* m_title;
};
