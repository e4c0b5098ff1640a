// content_view.h - the list of the content library: pictures with names below them, as many beside
// each other as there is room for. Enter opens, Backspace goes up.
#pragma once

#include <QListView>
#include <QStyledItemDelegate>

class ContentView : public QListView {
    Q_OBJECT
public:
    explicit ContentView(QWidget* parent = nullptr);

signals:
    void opened(const QModelIndex&);
    void upWanted();

protected:
    void keyPressEvent(QKeyEvent*) override;
};

// Paints a picture above a name on two lines.
class ContentTile : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter*, const QStyleOptionViewItem&, const QModelIndex&) const override;
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override;
};
