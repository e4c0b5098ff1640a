// scene_tree_panel.h - the nodes of the scene as a tree. Selecting rows selects nodes, several at
// once; the current row is the primary selection. Typing filters by label.
#pragma once

#include "dzpane.h"

#include <QHash>

class DzNode;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

class DzSceneTreePane : public DzPane {
    Q_OBJECT
public:
    DzSceneTreePane();

private slots:
    void rebuild();
    void relabel();
    void takeOverFromTree();
    void takeOverFromScene();
    void filter(const QString& text);

private:
    void addBelow(DzNode* node, QTreeWidgetItem* parent);

    QLineEdit* m_search;
    QTreeWidget* m_tree;
    QHash<DzNode*, QTreeWidgetItem*> m_items;
    QHash<QTreeWidgetItem*, DzNode*> m_nodes;
    bool m_syncing;
};
