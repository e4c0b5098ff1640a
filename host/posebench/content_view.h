// content_view.h - the list of the content library: pictures with names below them, as many beside
// each other as there is room for, all tiles of one size. Enter opens, Backspace goes up.
#pragma once

#include <QListView>
#include <QStringList>
#include <QStyledItemDelegate>

class ContentView : public QListView {
    Q_OBJECT
public:
    explicit ContentView(QWidget* parent = nullptr);
    void setTextWhenEmpty(const QString&); // in the middle, when there are no tiles
    QString textWhenEmpty() const;

signals:
    void opened(const QModelIndex&);
    void upWanted();

protected:
    void keyPressEvent(QKeyEvent*) override;
    void paintEvent(QPaintEvent*) override;
    void changeEvent(QEvent*) override;

private:
    QString m_textWhenEmpty;
};

// A name in at most so many lines: broken between words, within a word that is longer than a line.
// What has no room ends in an ellipsis.
QStringList tileLines(const QString& name, const QFont&, int widthPx, int mostLines);

// Paints a picture above a name of up to three lines.
class ContentTile : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter*, const QStyleOptionViewItem&, const QModelIndex&) const override;
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override;
};
